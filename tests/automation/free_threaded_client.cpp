// A program whose threads are in the multithreaded apartment, and which finds the classes through its manifest alone:
// its objects live in another apartment, and its calls, early-bound ones too, go through proxies.
#include <cstdio>

#include "automation/com/com.h"
#include "tornby_idl.h"

using tornby::automation::ComPtr;

namespace {

/// Ends the program with the number of the step that failed.
void expect(int step, bool is_so, HRESULT result = S_OK) {
  if (is_so) return;
  std::printf("step %d: %08lx\n", step, static_cast<unsigned long>(result));
  std::fflush(stdout);
  ::ExitProcess(static_cast<UINT>(step));
}

/// Takes back what other tests may have registered: it must not be of help here.
HRESULT unregister() {
  const HMODULE dll = ::LoadLibraryW(L"tornby.dll");
  const auto entry =
      reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(::GetProcAddress(dll, "DllUnregisterServer")));
  const HRESULT result = entry ? entry() : E_FAIL;
  ::FreeLibrary(dll);
  return result;
}

bool is_registered(const wchar_t* key) {
  HKEY opened = nullptr;
  if (::RegOpenKeyExW(HKEY_CLASSES_ROOT, key, 0, KEY_READ, &opened) != ERROR_SUCCESS) return false;
  ::RegCloseKey(opened);
  return true;
}

}  // namespace

int main() {
  const HRESULT unregistered = unregister();
  expect(7, unregistered == S_OK && !is_registered(L"Interface\\{B8B07649-F288-43E7-9C48-7594FACCF358}"), unregistered);
  expect(1, ::CoInitializeEx(nullptr, COINIT_MULTITHREADED) == S_OK);
  {
    ComPtr<IclsCRC> crc;
    HRESULT result = ::CoCreateInstance(CLSID_clsCRC, nullptr, CLSCTX_INPROC_SERVER, IID_IclsCRC, crc.out_void());
    expect(2, result == S_OK, result);
    const BSTR digits = ::SysAllocString(L"123456789");
    VARIANT sum;
    ::VariantInit(&sum);
    result = crc->AddString(digits, &sum);
    expect(3, result == S_OK && sum.vt == VT_I4 && sum.lVal == -873187034, result);

    ComPtr<IXML_Settings> settings;
    ComPtr<IStringCollection> nodes;
    const BSTR document = ::SysAllocString(L"<A>1</A>");
    result =
        ::CoCreateInstance(CLSID_XML_Settings, nullptr, CLSCTX_INPROC_SERVER, IID_IXML_Settings, settings.out_void());
    expect(4, result == S_OK, result);
    result = settings->SetContents(document);
    expect(5, result == S_OK, result);
    result = settings->FindNodes(nodes.out());
    LONG count = 0;
    expect(6, result == S_OK && nodes->get_Count(&count) == S_OK && count == 1, result);
    ::SysFreeString(document);
    ::SysFreeString(digits);
  }
  ::CoUninitialize();
  std::puts("passed");
}
