/* A client in C: the header of the interfaces, calls through them, and the events of an object.
   Usage: classes settings-file

   Each function gives the result of the first call that failed, and has let go of everything then, too. */
#define COBJMACROS
#include <initguid.h> /* the identifiers are defined in this file */
#include <windows.h>
#include <ocidl.h>
#include <tornby/automation/tornby_idl.h>

#include <stdio.h>

static HRESULT create(REFCLSID class_id, REFIID interface_id, void *object) {
  return CoCreateInstance(class_id, NULL, CLSCTX_INPROC_SERVER, interface_id, (void **)object);
}

static HRESULT checksum(IclsCRC *crc, BSTR text, long *sum) {
  VARIANT result;
  HRESULT hr;
  VariantInit(&result);
  hr = IclsCRC_AddString(crc, text, &result);
  if (SUCCEEDED(hr)) *sum = result.vt == VT_I4 ? result.lVal : 0;
  VariantClear(&result);
  return hr;
}

/* What CalculateFile answers is of three kinds. */
static HRESULT show_sum_of(IclsCRC *crc, BSTR name) {
  VARIANT sum;
  HRESULT hr;
  VariantInit(&sum);
  hr = IclsCRC_CalculateFile(crc, name, &sum);
  if (SUCCEEDED(hr) && sum.vt == VT_EMPTY) puts("missing file: empty, or a 32-bit program on 64-bit Windows");
  if (SUCCEEDED(hr) && sum.vt == VT_I2) puts("missing file: it cannot be read");
  if (SUCCEEDED(hr) && sum.vt == VT_I4) printf("missing file: %08lX\n", sum.lVal);
  VariantClear(&sum);
  return hr;
}

static HRESULT checksums(BSTR file) {
  IclsCRC *crc = NULL;
  IclsApi *api = NULL;
  BSTR digits = SysAllocString(L"123456789"), missing = SysAllocString(L"C:\\no such file"), text = NULL;
  long sum = 0;
  HRESULT hr = create(&CLSID_clsCRC, &IID_IclsCRC, &crc);
  if (SUCCEEDED(hr)) hr = checksum(crc, digits, &sum);
  if (SUCCEEDED(hr)) printf("checksum of 123456789: %08lX\n", sum);
  if (SUCCEEDED(hr)) hr = create(&CLSID_clsApi, &IID_IclsApi, &api);
  if (SUCCEEDED(hr)) hr = IclsApi_ApiReadFile(api, file, &text); /* "": empty, or it cannot be read */
  if (SUCCEEDED(hr)) hr = IclsCRC_Clear(crc);
  if (SUCCEEDED(hr)) hr = checksum(crc, text, &sum);
  if (SUCCEEDED(hr)) printf("file: %u characters, checksum %08lX\n", SysStringLen(text), sum);
  if (SUCCEEDED(hr)) hr = show_sum_of(crc, missing);
  SysFreeString(text);
  SysFreeString(missing);
  SysFreeString(digits);
  if (api) IclsApi_Release(api);
  if (crc) IclsCRC_Release(crc);
  return hr;
}

static HRESULT ciphers(void) {
  IclsEncryptXOR *cipher = NULL;
  BSTR text = SysAllocString(L"Z\u00FCrich, 3 \u20AC"), key = SysAllocString(L"k\u00E9y"), digits = NULL, again = NULL;
  HRESULT hr = create(&CLSID_clsEncryptXOR, &IID_IclsEncryptXOR, &cipher);
  if (SUCCEEDED(hr)) hr = IclsEncryptXOR_put_Key(cipher, key);
  if (SUCCEEDED(hr)) hr = IclsEncryptXOR_HexEncrypt(cipher, text, &digits);
  if (SUCCEEDED(hr)) hr = IclsEncryptXOR_HexDecrypt(cipher, digits, &again);
  if (SUCCEEDED(hr)) {
    printf("enciphered: %ls\n", digits);
    printf("deciphered: %s\n", again && wcscmp(again, text) == 0 ? "the same text" : "another text");
  }
  SysFreeString(again);
  SysFreeString(digits);
  SysFreeString(key);
  SysFreeString(text);
  if (cipher) IclsEncryptXOR_Release(cipher);
  return hr;
}

static HRESULT show_recent(IXML_Settings *settings) {
  SAFEARRAY *recent = NULL;
  BSTR *paths = NULL;
  HRESULT hr = IXML_Settings_ExtractRecent(settings, &recent);
  if (SUCCEEDED(hr)) hr = SafeArrayAccessData(recent, (void **)&paths);
  if (SUCCEEDED(hr)) {
    ULONG i;
    for (i = 0; i < recent->rgsabound[0].cElements; ++i) printf("recent file: %ls\n", paths[i] ? paths[i] : L"");
    SafeArrayUnaccessData(recent);
  }
  if (recent) SafeArrayDestroy(recent);
  return hr;
}

static HRESULT show_groups(IXML_Settings *settings) {
  IStringCollection *groups = NULL;
  long count = 0;
  VARIANT index;
  HRESULT hr = IXML_Settings_FindNodes(settings, &groups);
  if (SUCCEEDED(hr)) hr = IStringCollection_get_Count(groups, &count);
  VariantInit(&index);
  index.vt = VT_I4;
  for (index.lVal = 1; SUCCEEDED(hr) && index.lVal <= count; ++index.lVal) {
    BSTR group = NULL;
    hr = IStringCollection_get_Item(groups, index, &group);
    if (SUCCEEDED(hr)) printf("group: %ls\n", group);
    SysFreeString(group);
  }
  if (groups) IStringCollection_Release(groups);
  return hr;
}

/* The number of a failed call as scripts know it (9, not 0x800A0009), and the text that the object left for it, or else
   what the system says: "Class not registered" for example. */
static void show_error(HRESULT hr) {
  IErrorInfo *info = NULL;
  BSTR text = NULL;
  wchar_t system_text[256] = L"";
  if (GetErrorInfo(0, &info) == S_OK) {
    IErrorInfo_GetDescription(info, &text);
    IErrorInfo_Release(info);
  }
  if (!text)
    FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK, NULL, hr, 0,
                   system_text, 256, NULL);
  printf("error %ld: %ls\n", HRESULT_FACILITY(hr) == FACILITY_CONTROL ? HRESULT_CODE(hr) : hr,
         text ? text : system_text);
  SysFreeString(text);
}

static HRESULT errors(void) {
  IclsCRC *crc = NULL;
  IclsWebEncryption *web = NULL;
  BSTR malformed = SysAllocString(L"A==="), bytes = NULL;
  HRESULT hr = create(&CLSID_clsCRC, &IID_IclsCRC, &crc);
  if (SUCCEEDED(hr)) hr = create(&CLSID_clsWebEncryption, &IID_IclsWebEncryption, &web);
  if (SUCCEEDED(hr)) {
    long sum = 0;
    HRESULT failed = checksum(crc, NULL, &sum); /* no string is the empty one */
    if (FAILED(failed)) show_error(failed);
    failed = IclsWebEncryption_bsDecodeString(web, malformed, &bytes);
    if (FAILED(failed)) show_error(failed);
  }
  SysFreeString(bytes);
  SysFreeString(malformed);
  if (web) IclsWebEncryption_Release(web);
  if (crc) IclsCRC_Release(crc);
  return hr;
}

/* What hears the events: an IDispatch whose first member is its table of functions. It stands on the stack of the
   function that connects it and takes it out again, so there is nothing to count. */
typedef struct Sink {
  IDispatch dispatch;
  long maximum;
  int steps;
} Sink;

static HRESULT STDMETHODCALLTYPE sink_query(IDispatch *self, REFIID wanted, void **object) {
  const BOOL known = IsEqualIID(wanted, &DIID_DXML_SettingsEvents) || IsEqualIID(wanted, &IID_IDispatch) ||
                     IsEqualIID(wanted, &IID_IUnknown);
  *object = known ? self : NULL;
  return known ? S_OK : E_NOINTERFACE;
}
static ULONG STDMETHODCALLTYPE sink_count(IDispatch *self) {
  (void)self;
  return 1;
}
static HRESULT STDMETHODCALLTYPE sink_type_count(IDispatch *self, UINT *count) {
  (void)self;
  *count = 0;
  return S_OK;
}
static HRESULT STDMETHODCALLTYPE sink_type(IDispatch *self, UINT index, LCID language, ITypeInfo **type) {
  (void)self, (void)index, (void)language, (void)type;
  return E_NOTIMPL;
}
static HRESULT STDMETHODCALLTYPE sink_names(IDispatch *self, REFIID none, LPOLESTR *names, UINT count, LCID language,
                                            DISPID *ids) {
  (void)self, (void)none, (void)names, (void)count, (void)language, (void)ids;
  return E_NOTIMPL;
}
static HRESULT STDMETHODCALLTYPE sink_invoke(IDispatch *self, DISPID event, REFIID none, LCID language, WORD kind,
                                             DISPPARAMS *arguments, VARIANT *result, EXCEPINFO *info, UINT *wrong) {
  Sink *sink = (Sink *)self;
  (void)none, (void)language, (void)kind, (void)result, (void)info, (void)wrong;
  if (event == 1) sink->maximum = *arguments->rgvarg[0].plVal; /* ProgressMax */
  if (event == 2) ++sink->steps;                               /* ProgressCurrent */
  return S_OK;
}
static IDispatchVtbl sink_table = {sink_query, sink_count, sink_count, sink_type_count,
                                   sink_type,  sink_names, sink_invoke};

static HRESULT show_events(IXML_Settings *settings) {
  IConnectionPointContainer *container = NULL;
  IConnectionPoint *point = NULL;
  IStringCollection *blocks = NULL;
  BSTR group = SysAllocString(L"RECENTFILES");
  Sink sink = {{&sink_table}, 0, 0};
  DWORD cookie = 0;
  HRESULT hr = IXML_Settings_QueryInterface(settings, &IID_IConnectionPointContainer, (void **)&container);
  if (SUCCEEDED(hr))
    hr = IConnectionPointContainer_FindConnectionPoint(container, &DIID_DXML_SettingsEvents, &point);
  if (SUCCEEDED(hr)) hr = IConnectionPoint_Advise(point, (IUnknown *)&sink.dispatch, &cookie);
  if (SUCCEEDED(hr)) hr = IXML_Settings_ExtractBlock(settings, group, &blocks);
  if (SUCCEEDED(hr)) {
    printf("event ProgressMax: %ld\n", sink.maximum);
    printf("events ProgressCurrent: %d\n", sink.steps);
  }
  if (cookie) IConnectionPoint_Unadvise(point, cookie);
  if (blocks) IStringCollection_Release(blocks);
  if (point) IConnectionPoint_Release(point);
  if (container) IConnectionPointContainer_Release(container);
  SysFreeString(group);
  return hr;
}

static HRESULT settings_of(BSTR file, BOOL events) {
  IXML_Settings *settings = NULL;
  HRESULT hr = create(&CLSID_XML_Settings, &IID_IXML_Settings, &settings);
  if (SUCCEEDED(hr)) hr = IXML_Settings_put_FileName(settings, file);
  if (SUCCEEDED(hr) && !events) hr = show_recent(settings);
  if (SUCCEEDED(hr) && !events) hr = show_groups(settings);
  if (SUCCEEDED(hr) && events) hr = show_events(settings);
  if (settings) IXML_Settings_Release(settings);
  return hr;
}

/* Whether every object of the DLL has been let go of: a check while you write. */
static BOOL all_released(void) {
  HMODULE module = GetModuleHandleW(L"tornby.dll");
  union {
    FARPROC entry;
    HRESULT(WINAPI *can_unload)(void);
  } found;
  if (!module) return TRUE;
  found.entry = GetProcAddress(module, "DllCanUnloadNow");
  return found.entry && found.can_unload() == S_OK;
}

int wmain(int argc, wchar_t **argv) {
  HRESULT hr;
  BSTR file;
  if (argc != 2) return 2;
  file = SysAllocString(argv[1]);
  hr = CoInitialize(NULL);
  if (SUCCEEDED(hr)) {
    hr = checksums(file);
    if (SUCCEEDED(hr)) hr = ciphers();
    if (SUCCEEDED(hr)) hr = settings_of(file, FALSE);
    if (SUCCEEDED(hr)) hr = errors();
    if (SUCCEEDED(hr)) hr = settings_of(file, TRUE);
    if (FAILED(hr)) show_error(hr);
    puts(all_released() ? "all released" : "NOT all released");
    CoUninitialize();
  }
  SysFreeString(file);
  return SUCCEEDED(hr) ? 0 : 1;
}
