#include "platform/module.h"

#include "platform/text.h"
#include "platform/windows/system.h"
#include "platform/windows/system_library.h"

extern "C" IMAGE_DOS_HEADER __ImageBase;  // the linker's name for the start of the module that this code is part of

namespace tornby {
namespace {

using windows::system_function;

std::string module_path() {
  std::string path(MAX_PATH, '\0');
  for (;;) {
    const DWORD length =
        ::GetModuleFileNameA(reinterpret_cast<HMODULE>(&__ImageBase), path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return path;
    }
    path.resize(path.size() * 2);
  }
}

/// What reads version resources; all null where the system's library is missing.
struct VersionFunctions {
  decltype(&::GetFileVersionInfoSizeA) size =
      system_function<decltype(::GetFileVersionInfoSizeA)>(L"version.dll", "GetFileVersionInfoSizeA");
  decltype(&::GetFileVersionInfoA) read =
      system_function<decltype(::GetFileVersionInfoA)>(L"version.dll", "GetFileVersionInfoA");
  decltype(&::VerQueryValueA) query = system_function<decltype(::VerQueryValueA)>(L"version.dll", "VerQueryValueA");
};

const VersionFunctions& version_functions() {
  static const VersionFunctions functions;
  return functions;
}

/// The version resource of a module's file.
class VersionResource {
 public:
  explicit VersionResource(const std::string& path) {
    const VersionFunctions& version = version_functions();
    if (!version.size || !version.read || !version.query) return;
    DWORD ignored = 0;
    block_.resize(version.size(path.c_str(), &ignored));
    if (!block_.empty() && !version.read(path.c_str(), 0, static_cast<DWORD>(block_.size()), block_.data()))
      block_.clear();
  }

  /// Null when the resource or this part of it is missing.
  template <class Value>
  const Value* find(const std::string& part, UINT* length) const {
    void* value = nullptr;
    if (block_.empty() || !version_functions().query(block_.data(), part.c_str(), &value, length)) return nullptr;
    return static_cast<const Value*>(value);
  }

  /// A text in the first of the resource's languages; empty when it is missing.
  String text(const char* name) const {
    UINT length = 0;
    const WORD* language = find<WORD>("\\VarFileInfo\\Translation", &length);
    if (!language || length < 2 * sizeof(WORD)) return {};
    constexpr char digits[] = "0123456789abcdef";
    std::string part = "\\StringFileInfo\\";
    for (const WORD code : {language[0], language[1]})
      for (int shift = 12; shift >= 0; shift -= 4) part += digits[code >> shift & 0xF];
    const char* value = find<char>(part + '\\' + name, &length);
    return value ? from_ansi(value) : String();
  }

 private:
  std::string block_;
};

class WindowsModule final : public Module {
 public:
  String folder() const override {
    const String path = from_ansi(module_path());
    const std::size_t end = path.rfind(u'\\');
    if (end == String::npos) return {};
    const bool root = end > 0 && path[end - 1] == u':';
    return path.substr(0, root ? end + 1 : end);
  }

  String name() const override {
    const String path = from_ansi(module_path());
    const String file = path.substr(path.rfind(u'\\') + 1);
    return file.substr(0, file.rfind(u'.'));
  }

  ModuleVersion version() const override {
    const VersionResource resource(module_path());
    ModuleVersion version{resource.text("ProductName"), {}, resource.text("LegalCopyright")};
    if (version.product_name.empty()) version.product_name = name();
    UINT length = 0;
    if (const auto* fixed = resource.find<VS_FIXEDFILEINFO>("\\", &length))
      version.numbers = {HIWORD(fixed->dwProductVersionMS), LOWORD(fixed->dwProductVersionMS),
                         HIWORD(fixed->dwProductVersionLS)};
    return version;
  }
};

}  // namespace

const Module& native_module() {
  static const WindowsModule module;
  return module;
}

}  // namespace tornby
