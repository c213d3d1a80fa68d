// An early-bound client in C++: the header of the interfaces, calls through them, and the events of an object.
// Usage: early settings-file
#include <tornby/automation/tornby_idl.h>

#include <cstdio>

#include "com.h"

namespace {

void show(std::wstring_view line) {
  std::printf("%ls\n", std::wstring(line).c_str());
}

/// What CalculateFile answers is of three kinds.
std::string shown(const VARIANT& sum) {
  if (sum.vt == VT_EMPTY) return "empty, or a 32-bit program on 64-bit Windows";
  if (sum.vt == VT_I2) return "it cannot be read";
  char digits[9] = {};
  std::snprintf(digits, sizeof digits, "%08lX", sum.lVal);
  return digits;
}

/// The strings of an array that a member answered.
template <class Act>
void each_text(const VARIANT& array, Act act) {
  wchar_t** texts = nullptr;
  com::check(::SafeArrayAccessData(array.parray, reinterpret_cast<void**>(&texts)));
  const ULONG count = array.parray->rgsabound[0].cElements;
  for (ULONG i = 0; i < count; ++i) act(std::wstring_view(texts[i] ? texts[i] : L""));
  ::SafeArrayUnaccessData(array.parray);
}

void checksums(const com::String& file) {
  const auto crc = com::create<IclsCRC>(__uuidof(clsCRC));
  com::Value sum;
  com::check(crc->AddString(com::String(L"123456789"), &sum));
  std::printf("checksum of 123456789: %08lX\n", sum.number());

  com::String text;
  com::check(com::create<IclsApi>(__uuidof(clsApi))->ApiReadFile(file, text.out()));
  if (text.view().empty()) throw com::Error(53, L"empty, or it cannot be read");
  com::check(crc->Clear());
  com::Value file_sum;
  com::check(crc->AddString(text, &file_sum));
  std::printf("file: %u characters, checksum %08lX\n", static_cast<unsigned>(text.view().size()), file_sum.number());

  com::Value missing;
  com::check(crc->CalculateFile(com::String(L"C:\\no such file"), &missing));
  std::printf("missing file: %s\n", shown(missing).c_str());
}

void ciphers() {
  const auto cipher = com::create<IclsEncryptXOR>(__uuidof(clsEncryptXOR));
  const com::String text(L"Z\u00FCrich, 3 \u20AC");
  com::check(cipher->put_Key(com::String(L"k\u00E9y")));
  com::String digits, again;
  com::check(cipher->HexEncrypt(text, digits.out()));
  com::check(cipher->HexDecrypt(digits, again.out()));
  show(L"enciphered: " + std::wstring(digits.view()));
  show(again.view() == text.view() ? L"deciphered: the same text" : L"deciphered: another text");
}

void settings_of(const com::String& file) {
  const auto settings = com::create<IXML_Settings>(__uuidof(XML_Settings));
  com::check(settings->put_FileName(file));
  com::Value recent;
  com::check(settings->ExtractRecent(&recent.parray));
  recent.vt = VT_ARRAY | VT_BSTR;
  each_text(recent, [](std::wstring_view path) { show(L"recent file: " + std::wstring(path)); });

  com::Ref<IStringCollection> groups;
  com::check(settings->FindNodes(groups.out()));
  long count = 0;
  com::check(groups->get_Count(&count));
  for (long i = 1; i <= count; ++i) {
    com::String group;
    com::check(groups->get_Item(com::Value(i), group.out()));
    show(L"group: " + std::wstring(group.view()));
  }
}

void errors() {
  try {
    com::Value sum;
    com::check(com::create<IclsCRC>(__uuidof(clsCRC))->AddString(com::String(L""), &sum));
  } catch (const com::Error& error) {
    std::printf("error %ld: %ls\n", error.number, error.text.c_str());
  }
  try {
    com::String bytes;
    com::check(
        com::create<IclsWebEncryption>(__uuidof(clsWebEncryption))->bsDecodeString(com::String(L"A==="), bytes.out()));
  } catch (const com::Error& error) {
    std::printf("error %ld: %ls\n", error.number, error.text.c_str());
  }
}

void events_of(const com::String& file) {
  const auto settings = com::create<IXML_Settings>(__uuidof(XML_Settings));
  com::check(settings->put_FileName(file));
  int steps = 0;
  const com::Events events(settings, __uuidof(DXML_SettingsEvents), [&](DISPID event, DISPPARAMS& arguments) {
    if (event == 1) std::printf("event ProgressMax: %ld\n", *arguments.rgvarg[0].plVal);
    if (event == 2) ++steps;
  });
  com::Ref<IStringCollection> blocks;
  com::check(settings->ExtractBlock(com::String(L"RECENTFILES"), blocks.out()));
  std::printf("events ProgressCurrent: %d\n", steps);
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
  if (argc != 2) return 2;
  try {
    const com::Apartment apartment;
    const com::String file(argv[1]);
    checksums(file);
    ciphers();
    settings_of(file);
    errors();
    events_of(file);
    std::puts(com::all_released(L"tornby.dll") ? "all released" : "NOT all released");
    return 0;
  } catch (const com::Error& error) {
    std::fprintf(stderr, "failed with %ld: %ls\n", error.number, error.text.c_str());
    return 1;
  }
}
