// Memory that runs out inside the DLL, at each of its allocations in turn. The DLL is the product itself: what it
// imports to allocate is replaced in its table of imports.
#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "automation/controls/pages/property_page.h"
#include "server.h"
#include "support/failing_allocations.h"
#include "support/temporary_folder.h"

namespace tornby {
namespace {

using testing::AllocationFailure;
using testing::ComPtr;
using testing::fail_each_allocation;
using testing::OwnedVariant;
using testing::Server;

// What the DLL gets in place of the system's functions.
template <auto function, class... Arguments>
auto* or_null(Arguments... arguments) {
  return AllocationFailure::strikes() ? nullptr : function(arguments...);
}
void* failing_malloc(std::size_t size) {
  return or_null<std::malloc>(size);
}
void* failing_calloc(std::size_t count, std::size_t size) {
  return or_null<std::calloc>(count, size);
}
void* failing_realloc(void* block, std::size_t size) {
  return or_null<std::realloc>(block, size);
}
BSTR WINAPI failing_string(const OLECHAR* text, UINT length) {
  return or_null<::SysAllocStringLen>(text, length);
}
SAFEARRAY* WINAPI failing_array(VARTYPE type, LONG lower, ULONG count) {
  return or_null<::SafeArrayCreateVector>(type, lower, count);
}
void* WINAPI failing_task_memory(SIZE_T size) {
  return or_null<::CoTaskMemAlloc>(size);
}
HRESULT WINAPI failing_copy(VARIANT* to, VARIANT* from) {
  return AllocationFailure::strikes() ? E_OUTOFMEMORY : ::VariantCopyInd(to, from);
}
HRESULT WINAPI failing_change(VARIANT* to, VARIANT* from, USHORT flags, VARTYPE type) {
  return AllocationFailure::strikes() ? E_OUTOFMEMORY : ::VariantChangeType(to, from, flags, type);
}

/// The DLL's imports, replaced for as long as this lives.
class FailingImports {
 public:
  explicit FailingImports(const Server& server) {
    const std::map<std::string, void*> replacements = {
        {"malloc", reinterpret_cast<void*>(failing_malloc)},
        {"calloc", reinterpret_cast<void*>(failing_calloc)},
        {"realloc", reinterpret_cast<void*>(failing_realloc)},
        {"SysAllocStringLen", reinterpret_cast<void*>(failing_string)},
        {"SafeArrayCreateVector", reinterpret_cast<void*>(failing_array)},
        {"CoTaskMemAlloc", reinterpret_cast<void*>(failing_task_memory)},
        {"VariantCopyInd", reinterpret_cast<void*>(failing_copy)},
        {"VariantChangeType", reinterpret_cast<void*>(failing_change)},
    };
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<LPCWSTR>(server.entry("DllCanUnloadNow")), &module);
    auto* const base = reinterpret_cast<char*>(module);
    const auto* const headers =
        reinterpret_cast<IMAGE_NT_HEADERS*>(base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
    const DWORD imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
    for (auto* dll = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + imports); dll->Name != 0; ++dll) {
      const auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + dll->OriginalFirstThunk);
      auto* entry = reinterpret_cast<void**>(base + dll->FirstThunk);
      for (; names->u1.AddressOfData != 0; ++names, ++entry) {
        if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
        const auto* import = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
        const auto found = replacements.find(reinterpret_cast<const char*>(import->Name));
        if (found != replacements.end()) replaced_.emplace_back(entry, write(entry, found->second));
      }
    }
    EXPECT_GE(replaced_.size(), 7u);
  }
  ~FailingImports() {
    for (const auto& [entry, original] : replaced_) write(entry, original);
  }
  FailingImports(const FailingImports&) = delete;
  FailingImports& operator=(const FailingImports&) = delete;

 private:
  static void* write(void** entry, void* function) {
    DWORD protection = 0;
    ::VirtualProtect(entry, sizeof *entry, PAGE_READWRITE, &protection);
    void* const previous = std::exchange(*entry, function);
    ::VirtualProtect(entry, sizeof *entry, protection, &protection);
    return previous;
  }

  std::vector<std::pair<void**, void*>> replaced_;
};

bool is_out_of_memory(HRESULT result, HRESULT error = S_OK) {
  const auto is_it = [](HRESULT code) { return code == E_OUTOFMEMORY || static_cast<ULONG>(code) == 0x800A0007; };
  return is_it(result == DISP_E_EXCEPTION ? error : result);
}

std::string text_of(const VARIANT& value) {
  if (value.vt == VT_DISPATCH || value.vt == VT_UNKNOWN) return value.punkVal ? "an object" : "nothing";
  if ((value.vt & VT_ARRAY) != 0 && !value.parray) return "no array";
  if ((value.vt & VT_ARRAY) != 0) return "array of " + std::to_string(value.parray->rgsabound[0].cElements);
  OwnedVariant text;
  if (FAILED(::VariantChangeType(text.get(), const_cast<VARIANT*>(&value), 0, VT_BSTR))) return "(none)";
  return std::string(text->bstrVal, text->bstrVal + ::SysStringLen(text->bstrVal));
}

/// One way of calling a member, with arguments that fit.
struct Call {
  std::string name;
  DISPID id;
  WORD way;
  std::vector<std::pair<std::string, TYPEDESC>> parameters;
  bool hidden;
};

std::vector<Call> calls_of(IDispatch* object) {
  std::vector<Call> calls;
  ComPtr<ITypeInfo> info;
  TYPEATTR* attributes = nullptr;
  EXPECT_EQ(object->GetTypeInfo(0, 0, info.out()), S_OK);
  EXPECT_EQ(info->GetTypeAttr(&attributes), S_OK);
  for (UINT i = 0; i < attributes->cFuncs; ++i) {
    FUNCDESC* function = nullptr;
    EXPECT_EQ(info->GetFuncDesc(i, &function), S_OK);
    if ((function->memid & 0x7FFC0000) != 0x60000000) {
      BSTR names[8] = {};
      UINT count = 0;
      info->GetNames(function->memid, names, 8, &count);
      std::vector<std::string> parts;
      for (UINT n = 0; n < count; ++n) parts.emplace_back(names[n], names[n] + ::SysStringLen(names[n]));
      for (BSTR name : names) ::SysFreeString(name);
      Call call{parts[0],
                function->memid,
                static_cast<WORD>(function->invkind),
                {},
                (function->wFuncFlags & FUNCFLAG_FHIDDEN) != 0};
      for (SHORT p = 0; p < function->cParams; ++p) {
        TYPEDESC type = function->lprgelemdescParam[p].tdesc;
        if (type.vt == VT_PTR) type = {{nullptr}, static_cast<VARTYPE>(VT_BYREF | type.lptdesc->vt)};
        call.parameters.emplace_back(static_cast<std::size_t>(p) + 1 < parts.size() ? parts[p + 1u] : parts[0], type);
      }
      calls.push_back(std::move(call));
    }
    info->ReleaseFuncDesc(function);
  }
  info->ReleaseTypeAttr(attributes);
  return calls;
}

/// Arguments made anew for each attempt, by what their parameters are called and are.
class Arguments {
 public:
  Arguments(const Call& call, const std::wstring& file) : values_(call.parameters.size()) {
    const std::map<std::string, std::wstring> texts = {
        {"group", L"GROUP"},    {"Key", L"KEY"},         {"tag", L"<GROUP>"},  {"name", L"GROUP"},
        {"digits", L"2A00"},    {"path", L"C:\\a"},      {"file_name", file},  {"FileName", file},
        {"block", L"<G>x</G>"}, {"subkey", L"Software"}, {"Text", L"Zm9vYg=="}};
    for (std::size_t i = 0; i < values_.size(); ++i) {
      const auto& [name, type] = call.parameters[i];
      const auto known = texts.find(name);
      const std::wstring text = known == texts.end() ? L"some text" : known->second;
      VARIANT& value = *values_[i];
      switch (type.vt & ~VT_BYREF) {
        case VT_BSTR:
          value = testing::string_variant(text.c_str());
          break;
        case VT_SAFEARRAY: {
          value.vt = VT_ARRAY | VT_VARIANT;
          value.parray = ::SafeArrayCreateVector(VT_VARIANT, 0, 4);
          for (int n = 0; n < 4; ++n) static_cast<VARIANT*>(value.parray->pvData)[n] = testing::long_variant(65 + n);
          break;
        }
        case VT_USERDEFINED:
          if ((type.vt & VT_BYREF) != 0) {  // a font or a picture: none
            value.vt = VT_DISPATCH;
            break;
          }
          [[fallthrough]];
        default:
          value = testing::long_variant(1);
      }
    }
    for (std::size_t i = values_.size(); i-- > 0;)
      reversed_.push_back((call.parameters[i].second.vt & VT_BYREF) != 0 ? testing::variable(values_[i].get())
                                                                         : *values_[i]);
  }

  HRESULT invoke(IDispatch* object, const Call& call, VARIANT* result, HRESULT& error) {
    DISPID put = DISPID_PROPERTYPUT;
    const bool writes = (call.way & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
    DISPPARAMS parameters = {reversed_.data(), writes ? &put : nullptr, static_cast<UINT>(reversed_.size()),
                             writes ? 1u : 0u};
    EXCEPINFO exception = {};
    const HRESULT outcome = object->Invoke(call.id, IID_NULL, 0, call.way, &parameters, result, &exception, nullptr);
    error = exception.scode;
    ::SysFreeString(exception.bstrDescription);
    ::SysFreeString(exception.bstrSource);
    ::SysFreeString(exception.bstrHelpFile);
    return outcome;
  }

  /// What by-reference arguments hold.
  std::string variables() const {
    std::string all;
    for (const VARIANT& argument : reversed_)
      if (argument.vt == (VT_BYREF | VT_VARIANT)) all += text_of(*argument.pvarVal) + ";";
    return all;
  }

 private:
  std::vector<OwnedVariant> values_;
  std::vector<VARIANT> reversed_;
};

/// Every property of the object that can be read, as text.
std::string state_of(IDispatch* object, const std::vector<Call>& calls) {
  std::string state;
  for (const Call& call : calls) {
    const bool reads = call.way == DISPATCH_PROPERTYGET || call.name == "GetContents";
    if (!reads || !call.parameters.empty() || call.hidden) continue;
    OwnedVariant value;
    HRESULT error = S_OK;
    Arguments(call, L"").invoke(object, call, value.get(), error);
    state += call.name + "=" + text_of(*value) + "\n";
  }
  return state;
}

/// A class, and what its objects need before their members can show anything.
struct Subject {
  ComPtr<IClassFactory> factory;
  std::wstring file;

  ComPtr<IDispatch> make() const {
    ComPtr<IDispatch> object;
    EXPECT_EQ(factory->CreateInstance(nullptr, IID_IDispatch, object.out_void()), S_OK);
    ComPtr<IXML_Settings> settings;
    if (SUCCEEDED(object->QueryInterface(__uuidof(IXML_Settings), settings.out_void()))) {
      EXPECT_EQ(settings->put_FileName(testing::Bstr(file.c_str())), S_OK);
    }
    ComPtr<IValueCollection> values;
    ComPtr<IPropertyClass> pair;
    if (SUCCEEDED(object->QueryInterface(__uuidof(IValueCollection), values.out_void()))) {
      EXPECT_EQ(values->Add(testing::Bstr(L"K"), testing::Bstr(L"1"), pair.out()), S_OK);
    }
    return object;
  }
};

#define TORNBY_CLASS(name, clsid, description) {#name, &CLSID_##name},
const struct {
  const char* name;
  const CLSID* id;
} classes[] = {
#include "automation/server/classes.inc"
};
#undef TORNBY_CLASS

/// Members whose answer is defined for when they fail, so that they raise no error.
const std::set<std::string> members_that_answer_failures = {"apiSaveFile", "ApiReadFile", "CalculateFile"};
/// Members that wait a while for others to be done with the file, at each attempt to save; they get a name in a folder
/// that is not there. The tests of saving itself make its allocations fail.
const std::set<std::string> members_that_save = {"apiSaveFile", "Save", "UpdateRecent"};
/// Members that wait for somebody in front of the screen.
const std::set<std::string> members_that_wait = {"strGetSaveFileName", "strGetOpenFileName", "blnPageSetup",
                                                 "blnChooseFont",      "blnPrintDialog",     "fstrBrowseForFolder",
                                                 "flngShowAbout"};

TEST(FailingMemory, EveryMemberFailsCleanlyOrNotAtAll) {
  const Server server;
  const testing::TemporaryFolder folder;
  server.create<IDispatch>(CLSID_clsCRC);  // prepares this thread for exceptions
  const FailingImports imports(server);
  unsigned failures = 0;
  for (const auto& entry : classes) {
    SCOPED_TRACE(entry.name);
    const auto factory = server.factory(*entry.id);
    const auto start_anew = [&] { folder.write("file.txt", "<GROUP>\r\n<KEY>1</KEY>\r\n</GROUP>\r\n"); };
    failures += fail_each_allocation([&](AllocationFailure& failure) {
      ComPtr<IDispatch> object;
      const HRESULT result =
          failure.during([&] { return factory->CreateInstance(nullptr, IID_IDispatch, object.out_void()); });
      EXPECT_TRUE(failure.happened() ? is_out_of_memory(result) : result == S_OK) << std::hex << result;
    });
    const auto calls = calls_of(server.create<IDispatch>(*entry.id).get());
    for (const Call& call : calls) {
      if (members_that_wait.count(call.name)) continue;
      const auto parent = members_that_save.count(call.name) ? folder.path() / "none" : folder.path();
      const Subject subject{factory, (parent / "file.txt").wstring()};
      SCOPED_TRACE(call.name + " " + std::to_string(call.way));
      const auto run = [&](IDispatch* object, Arguments& arguments, AllocationFailure* failure, HRESULT& error) {
        OwnedVariant value;
        const HRESULT result = failure
                                   ? failure->during([&] { return arguments.invoke(object, call, value.get(), error); })
                                   : arguments.invoke(object, call, value.get(), error);
        return std::make_pair(result, text_of(*value));
      };
      HRESULT error = S_OK;
      start_anew();
      Arguments undisturbed(call, subject.file);
      const auto model = subject.make();
      const auto [usual, answer] = run(model.get(), undisturbed, nullptr, error);
      const std::string after = state_of(model.get(), calls);
      failures += fail_each_allocation([&](AllocationFailure& failure) {
        start_anew();
        const auto object = subject.make();
        const std::string before = state_of(object.get(), calls);
        Arguments arguments(call, subject.file), again(call, subject.file);
        const std::string variables = arguments.variables();
        const auto [result, got] = run(object.get(), arguments, &failure, error);
        if (result == usual) {
          EXPECT_TRUE(got == answer || members_that_answer_failures.count(call.name)) << got << " and not " << answer;
          return;
        }
        EXPECT_TRUE(failure.happened() && is_out_of_memory(result, error)) << std::hex << result << " " << error;
        const std::string state = state_of(object.get(), calls);
        // A property may have its new value when what follows from it fails, such as the layout.
        EXPECT_TRUE(state == before || state == after) << state << "was " << before;
        EXPECT_EQ(arguments.variables(), variables);
        EXPECT_EQ(run(object.get(), again, nullptr, error), std::make_pair(usual, answer)) << "tried again";
      });
      ::SetErrorInfo(0, nullptr);
    }
  }
  EXPECT_GT(failures, 500u);
  EXPECT_TRUE(server.is_idle());
}

TEST(FailingMemory, ThePropertyPageLosesNothing) {
  const Server server;
  const HWND parent =
      ::CreateWindowW(L"Static", L"", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300, nullptr, nullptr, nullptr, nullptr);
  const RECT place = {0, 0, 400, 300};
  const testing::Bstr before(L"before"), after(L"after");
  server.create<IDispatch>(CLSID_clsCRC);  // prepares this thread for exceptions
  auto sized = server.create<IPropertyPage>(automation::property_page_id);
  const FailingImports imports(server);
  unsigned failures = fail_each_allocation([&](AllocationFailure& failure) {
    PROPPAGEINFO info = {};
    info.cb = sizeof info;
    const HRESULT result = failure.during([&] { return sized->GetPageInfo(&info); });
    EXPECT_TRUE(failure.happened() ? is_out_of_memory(result) : result == S_OK) << std::hex << result;
    EXPECT_EQ(FAILED(result), !info.pszTitle && !info.pszDocString && !info.pszHelpFile);
    for (LPOLESTR text : {info.pszTitle, info.pszDocString, info.pszHelpFile}) ::CoTaskMemFree(text);
  });
  failures += fail_each_allocation([&](AllocationFailure& failure) {
    const auto link = server.create<IkelHyperLabel>(CLSID_kelHyperLabel);
    link->put_Caption(before);
    IUnknown* object = link.get();
    const auto page = server.create<IPropertyPage>(automation::property_page_id);
    const auto edit = [&] {
      bool done = SUCCEEDED(page->SetObjects(1, &object)) && SUCCEEDED(page->Activate(parent, &place, FALSE));
      if (done) {
        const HWND caption = ::FindWindowExW(::GetWindow(parent, GW_CHILD), nullptr, L"Edit", nullptr);
        ::SendMessageW(caption, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(static_cast<BSTR>(after)));
        ::SendMessageW(::GetParent(caption), WM_COMMAND, MAKEWPARAM(::GetDlgCtrlID(caption), EN_CHANGE), 0);
        done = page->Apply() == S_OK;
      }
      page->Deactivate();
      page->SetObjects(0, nullptr);
      return done;
    };
    const bool applied = failure.during(edit);
    testing::Bstr caption;
    link->get_Caption(caption.address());
    const std::wstring text = static_cast<BSTR>(caption);
    EXPECT_TRUE(text == L"after" || (text == L"before" && !applied)) << applied;
    EXPECT_TRUE(applied || failure.happened());
    EXPECT_EQ(::GetWindow(parent, GW_CHILD), nullptr);
    EXPECT_TRUE(edit()) << "tried again";
  });
  EXPECT_GT(failures, 200u);
  ::DestroyWindow(parent);
  sized = ComPtr<IPropertyPage>();
  EXPECT_TRUE(server.is_idle());
}

}  // namespace
}  // namespace tornby
