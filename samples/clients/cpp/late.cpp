// A late-bound client in C++: classes and members by name only, as a script has them. No header of the DLL is needed.
// Usage: late settings-file
#include <algorithm>
#include <cstdio>
#include <vector>

#include "com.h"

namespace {

/// An object whose members are called by their names.
class Object {
 public:
  explicit Object(const wchar_t* name) {
    CLSID id = {};
    com::check(::CLSIDFromProgID(name, &id));
    object_ = com::create<IDispatch>(id);
  }
  explicit Object(const com::Value& value) {
    if (value.vt != VT_DISPATCH || !value.pdispVal) throw com::Error(91, L"no object");
    value.pdispVal->AddRef();
    *object_.out() = value.pdispVal;
  }

  /// Calls a method or reads a property.
  template <class... Arguments>
  com::Value get(const wchar_t* name, const Arguments&... arguments) const {
    return invoke(number_of(name), DISPATCH_METHOD | DISPATCH_PROPERTYGET, std::vector<VARIANT>{arguments...});
  }
  void put(const wchar_t* name, const com::Value& value) const {
    invoke(number_of(name), DISPATCH_PROPERTYPUT, {value});
  }
  /// As "For Each" does.
  template <class Act>
  void each(Act act) const {
    const com::Value values = invoke(DISPID_NEWENUM, DISPATCH_METHOD | DISPATCH_PROPERTYGET, {});
    com::Ref<IEnumVARIANT> walk;
    com::check(values.punkVal->QueryInterface(__uuidof(IEnumVARIANT), reinterpret_cast<void**>(walk.out())));
    for (com::Value value; walk->Next(1, &value, nullptr) == S_OK; value = com::Value()) act(value);
  }

 private:
  DISPID number_of(const wchar_t* name) const {
    DISPID id = DISPID_UNKNOWN;
    auto* written = const_cast<wchar_t*>(name);
    com::check(object_->GetIDsOfNames(IID_NULL, &written, 1, LOCALE_USER_DEFAULT, &id));
    return id;
  }
  /// The arguments stay the caller's.
  com::Value invoke(DISPID member, WORD kind, std::vector<VARIANT> arguments) const {
    std::reverse(arguments.begin(), arguments.end());
    DISPID written = DISPID_PROPERTYPUT;
    DISPPARAMS all = {arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    if (kind == DISPATCH_PROPERTYPUT) {
      all.rgdispidNamedArgs = &written;
      all.cNamedArgs = 1;
    }
    com::Value result;
    EXCEPINFO info = {};
    const HRESULT called = object_->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, kind, &all, &result, &info, nullptr);
    if (called != DISP_E_EXCEPTION) {
      com::check(called);
      return result;
    }
    if (info.pfnDeferredFillIn) info.pfnDeferredFillIn(&info);
    com::String source, text, help;
    *source.out() = info.bstrSource;
    *text.out() = info.bstrDescription;
    *help.out() = info.bstrHelpFile;
    throw com::Error(info.scode ? info.scode : info.wCode, std::wstring(text.view()));
  }

  com::Ref<IDispatch> object_;
};

void show(const char* what, std::wstring_view text) {
  std::printf("%s: %ls\n", what, std::wstring(text).c_str());
}

void show_error(const Object& object, const wchar_t* member, const wchar_t* argument) {
  try {
    object.get(member, com::Value(argument));
  } catch (const com::Error& error) {
    std::printf("error %ld: %ls\n", error.number, error.text.c_str());
  }
}

void run(const wchar_t* file) {
  const Object crc(L"Tornby.clsCRC");
  crc.get(L"AddString", com::Value(L"123456789"));
  std::printf("checksum of 123456789: %08lX\n", crc.get(L"Value").number());

  const com::Value text = Object(L"Tornby.clsApi").get(L"ApiReadFile", com::Value(file));
  if (text.text().empty()) throw com::Error(53, L"empty, or it cannot be read");
  crc.get(L"Clear");
  const long sum = crc.get(L"AddString", text).number();
  std::printf("file: %u characters, checksum %08lX\n", static_cast<unsigned>(text.text().size()), sum);

  // Empty would be an empty file, or a 32-bit program on 64-bit Windows; a long number the checksum.
  const com::Value missing = crc.get(L"CalculateFile", com::Value(L"C:\\no such file"));
  show("missing file", missing.vt == VT_I2 ? L"it cannot be read" : L"it is there");

  const Object cipher(L"Tornby.clsEncryptXOR");
  const com::Value plain(L"Z\u00FCrich, 3 \u20AC");
  cipher.put(L"Key", com::Value(L"k\u00E9y"));
  const com::Value digits = cipher.get(L"HexEncrypt", plain);
  show("enciphered", digits.text());
  const com::Value again = cipher.get(L"HexDecrypt", digits);
  show("deciphered", again.text() == plain.text() ? L"the same text" : L"another text");

  const Object settings(L"Tornby.XML_Settings");
  settings.put(L"FileName", com::Value(file));
  const com::Value recent = settings.get(L"ExtractRecent");
  if (recent.vt != (VT_ARRAY | VT_VARIANT)) throw com::Error(DISP_E_TYPEMISMATCH, L"no array of values");
  long last = -1;
  com::check(::SafeArrayGetUBound(recent.parray, 1, &last));
  for (long i = 0; i <= last; ++i) {
    com::Value path;
    com::check(::SafeArrayGetElement(recent.parray, &i, static_cast<VARIANT*>(&path)));
    show("recent file", path.text());
  }
  Object(settings.get(L"FindNodes")).each([](const com::Value& group) { show("group", group.text()); });

  show_error(Object(L"Tornby.clsCRC"), L"AddString", L"");
  show_error(Object(L"Tornby.clsWebEncryption"), L"bsDecodeString", L"A===");
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) return 2;
  try {
    const com::Apartment apartment;
    run(argv[1]);
    std::puts(com::all_released(L"tornby.dll") ? "all released" : "NOT all released");
    return 0;
  } catch (const com::Error& error) {
    std::fprintf(stderr, "failed with %ld: %ls\n", error.number, error.text.c_str());
    return 1;
  }
}
