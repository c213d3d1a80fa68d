// Shows the properties of a control to change them, as a form designer does: the control's own verb opens the pages.
// Usage: sample_properties [class]    Tornby.kelLabel by default; prints the caption or text that the control has then
#include <windows.h>

#include <olectl.h>

#include <cstdio>
#include <initializer_list>

namespace {

/// The caption of a label or link, or the text of a field; the caller frees it.
BSTR text_of(IDispatch* control) {
  for (const DISPID property : {DISPID_CAPTION, DISPID_TEXT}) {
    VARIANT value = {};
    DISPPARAMS none = {};
    const HRESULT result =
        control->Invoke(property, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value, nullptr, nullptr);
    if (SUCCEEDED(result) && value.vt == VT_BSTR) return value.bstrVal;
  }
  return nullptr;
}

HRESULT show_properties(const wchar_t* name) {
  CLSID clsid = {};
  IDispatch* control = nullptr;
  IOleObject* object = nullptr;
  HRESULT result = ::CLSIDFromProgID(name, &clsid);
  if (SUCCEEDED(result))
    result =
        ::CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, reinterpret_cast<void**>(&control));
  if (SUCCEEDED(result)) result = control->QueryInterface(IID_IOleObject, reinterpret_cast<void**>(&object));
  if (SUCCEEDED(result)) result = object->DoVerb(OLEIVERB_PROPERTIES, nullptr, nullptr, 0, nullptr, nullptr);
  if (SUCCEEDED(result)) {
    const BSTR text = text_of(control);
    std::printf("%ls\n", text ? text : L"");
    ::SysFreeString(text);
  }
  if (object) object->Release();
  if (control) control->Release();
  return result;
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (FAILED(::OleInitialize(nullptr))) return 1;
  const HRESULT result = show_properties(argc > 1 ? argv[1] : L"Tornby.kelLabel");
  if (FAILED(result))
    std::fprintf(stderr, "failed with %08lX; is tornby.dll registered?\n", static_cast<unsigned long>(result));
  ::OleUninitialize();
  return FAILED(result) ? 1 : 0;
}
