// A property read late-bound, beside the system's dictionary object: the name and the call, each and together. Names
// are group/who; the first of a group is what the others are compared with.
#include <benchmark/benchmark.h>

#include "automation/com/com.h"

namespace {

using tornby::automation::ComPtr;

/// Objects for as long as the program runs; the DLL stands beside it and needs no registry.
struct Objects {
  ComPtr<IDispatch> dictionary;
  ComPtr<IDispatch> crc;
};

ComPtr<IDispatch> create_crc() {
  using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
  ComPtr<IClassFactory> factory;
  ComPtr<IDispatch> object;
  CLSID id{};
  const HMODULE dll = ::LoadLibraryW(L"tornby.dll");
  const auto get =
      reinterpret_cast<GetClassObject>(reinterpret_cast<void*>(::GetProcAddress(dll, "DllGetClassObject")));
  if (get && SUCCEEDED(::CLSIDFromString(L"{F141988C-CE97-4203-9C71-95028B734113}", &id)) &&
      SUCCEEDED(get(id, IID_IClassFactory, factory.out_void())))
    factory->CreateInstance(nullptr, IID_IDispatch, object.out_void());
  return object;
}

ComPtr<IDispatch> create_dictionary() {
  ComPtr<IDispatch> object;
  CLSID id{};
  if (SUCCEEDED(::CLSIDFromProgID(L"Scripting.Dictionary", &id)))
    ::CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, object.out_void());
  return object;
}

const Objects& objects() {
  static const Objects made = [] {
    ::CoInitialize(nullptr);
    return Objects{create_dictionary(), create_crc()};
  }();
  return made;
}

HRESULT find(IDispatch* object, const wchar_t* property, DISPID& id) {
  auto* name = const_cast<LPOLESTR>(property);
  return object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
}

HRESULT read(IDispatch* object, DISPID id) {
  DISPPARAMS none = {};
  VARIANT result;
  ::VariantInit(&result);
  const HRESULT outcome =
      object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &result, nullptr, nullptr);
  benchmark::DoNotOptimize(result.lVal);
  return outcome;
}

template <class Action>
void add(const char* name, ComPtr<IDispatch> Objects::*which, const wchar_t* property, Action action) {
  benchmark::RegisterBenchmark(name, [=](benchmark::State& state) {
    IDispatch* const object = (objects().*which).get();
    DISPID id = DISPID_UNKNOWN;
    if (!object || FAILED(find(object, property, id)) || FAILED(read(object, id))) {
      state.SkipWithError("the object is not to be had");
      return;
    }
    for (auto _ : state) benchmark::DoNotOptimize(action(object, property, id));
  })->UseRealTime();
}

const bool added = [] {
  const auto name = [](IDispatch* object, const wchar_t* property, DISPID id) { return find(object, property, id); };
  const auto call = [](IDispatch* object, const wchar_t*, DISPID id) { return read(object, id); };
  const auto both = [](IDispatch* object, const wchar_t* property, DISPID id) {
    return find(object, property, id) | read(object, id);
  };
  add("late_bound_property/dictionary", &Objects::dictionary, L"Count", both);
  add("late_bound_property/tornby", &Objects::crc, L"Algorithm", both);
  add("late_bound_name/dictionary", &Objects::dictionary, L"Count", name);
  add("late_bound_name/tornby", &Objects::crc, L"Algorithm", name);
  add("late_bound_call/dictionary", &Objects::dictionary, L"Count", call);
  add("late_bound_call/tornby", &Objects::crc, L"Algorithm", call);
  return true;
}();

}  // namespace
