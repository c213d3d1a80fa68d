#include "platform/dialogs.h"

#include <cstddef>
#include <cstring>

#include "platform/windows/system.h"
#include "platform/windows/window_handle.h"

// These want windows.h before them.
#include <commdlg.h>
#include <shellapi.h>
#include <shlobj.h>

namespace tornby {
namespace {

using windows::window_handle;

/// The size that a structure is told to have: the caller's where the structure is the one that it means.
constexpr DWORD structure_size(std::uint32_t on_32_bits, std::size_t native) {
  return sizeof(void*) == 4 ? on_32_bits : static_cast<DWORD>(native);
}
constexpr std::size_t file_record_size = offsetof(OPENFILENAMEA, pvReserved);  // without what came later
#ifdef __i386__
static_assert(file_record_size == 76 && sizeof(CHOOSEFONTA) == 60 && sizeof(LOGFONTA) == 60 &&
              sizeof(PRINTDLGA) == 66 && sizeof(PAGESETUPDLGA) == 84);
#endif

/// A pointer to the text, null for none.
const char* text_or_null(const std::string& text) {
  return text.empty() ? nullptr : text.c_str();
}

/// Memory that a dialog allocated for its caller.
class GlobalBlock {
 public:
  explicit GlobalBlock(HGLOBAL block) : block_(block) {}
  ~GlobalBlock() {
    if (block_) ::GlobalFree(block_);
  }
  GlobalBlock(const GlobalBlock&) = delete;
  GlobalBlock& operator=(const GlobalBlock&) = delete;

 private:
  HGLOBAL block_;
};

/// A place in the shell's name space.
class ItemList {
 public:
  explicit ItemList(PIDLIST_ABSOLUTE list) : list_(list) {}
  ~ItemList() { ::CoTaskMemFree(list_); }
  ItemList(const ItemList&) = delete;
  ItemList& operator=(const ItemList&) = delete;

  PCIDLIST_ABSOLUTE get() const { return list_; }

 private:
  PIDLIST_ABSOLUTE list_;
};

FileDialogAnswer run_file_dialog(BOOL(WINAPI* show)(OPENFILENAMEA*), const FileDialogRequest& request) {
  FileDialogAnswer answer;
  answer.file = request.file;
  std::string title = request.title;
  OPENFILENAMEA record{};
  record.lStructSize = structure_size(request.structure_size, file_record_size);
  record.hwndOwner = window_handle(request.owner);
  record.lpstrFilter = text_or_null(request.filter);
  record.nFilterIndex = static_cast<DWORD>(request.filter_index);
  record.lpstrFile = answer.file.data();
  record.nMaxFile = request.file_length;
  record.lpstrFileTitle = title.data();
  record.nMaxFileTitle = request.title_length;
  record.lpstrInitialDir = request.initial_folder.c_str();
  record.lpstrTitle = request.caption.c_str();
  record.Flags = request.flags;
  answer.result = show(&record);
  answer.filter_index = static_cast<std::int32_t>(record.nFilterIndex);
  return answer;
}

LOGFONTA to_system(const LogicalFont& font) {
  LOGFONTA record{};
  record.lfHeight = font.height;
  record.lfWeight = font.weight;
  record.lfItalic = font.italic;
  record.lfCharSet = font.character_set;
  static_assert(sizeof record.lfFaceName == sizeof font.face);
  std::memcpy(record.lfFaceName, font.face.data(), font.face.size());
  return record;
}

LogicalFont from_system(const LOGFONTA& record) {
  LogicalFont font{record.lfHeight, record.lfWeight, record.lfItalic, record.lfCharSet, {}};
  std::memcpy(font.face.data(), record.lfFaceName, font.face.size());
  return font;
}

RECT to_system(const Margins& margins) {
  return {margins.left, margins.top, margins.right, margins.bottom};
}

Margins from_system(const RECT& record) {
  return {record.left, record.top, record.right, record.bottom};
}

class WindowsDialogs final : public Dialogs {
 public:
  std::int32_t desktop_window() override { return window_number(::GetDesktopWindow()); }

  FileDialogAnswer open_file(const FileDialogRequest& request) override {
    return run_file_dialog(::GetOpenFileNameA, request);
  }
  FileDialogAnswer save_file(const FileDialogRequest& request) override {
    return run_file_dialog(::GetSaveFileNameA, request);
  }

  FolderDialogAnswer browse_for_folder(const FolderDialogRequest& request) override {
    BROWSEINFOA record{};
    record.hwndOwner = window_handle(request.owner);
    record.lpszTitle = request.instruction.c_str();
    record.ulFlags = request.flags;
    const ItemList list(::SHBrowseForFolderA(&record));
    FolderDialogAnswer answer;
    answer.path.resize(MAX_PATH);
    answer.has_path = ::SHGetPathFromIDListA(list.get(), answer.path.data()) != 0;
    return answer;
  }

  FontDialogAnswer choose_font(const FontDialogRequest& request) override {
    FontDialogAnswer answer;
    answer.style = request.style;
    LOGFONTA font = to_system(request.font);
    CHOOSEFONTA record{};
    record.lStructSize = structure_size(request.structure_size, sizeof record);
    record.hwndOwner = window_handle(request.owner);
    record.lpLogFont = &font;
    record.Flags = request.flags;
    record.rgbColors = request.color;
    if (answer.style.empty()) record.Flags &= ~static_cast<DWORD>(CF_USESTYLE);  // no room to write it to
    record.lpszStyle = answer.style.data();
    record.nFontType = request.font_type;
    answer.result = ::ChooseFontA(&record);
    answer.font = from_system(font);
    answer.point_size = record.iPointSize;
    answer.color = record.rgbColors;
    answer.font_type = record.nFontType;
    return answer;
  }

  PrintDialogAnswer print(const PrintDialogRequest& request) override {
    PRINTDLGA record{};
    record.lStructSize = structure_size(request.structure_size, sizeof record);
    record.hwndOwner = window_handle(request.owner);
    record.Flags = request.flags;
    const PrintDialogAnswer answer{::PrintDlgA(&record)};
    const GlobalBlock mode(record.hDevMode);
    const GlobalBlock names(record.hDevNames);
    return answer;
  }

  PageSetupAnswer set_up_page(const PageSetupRequest& request) override {
    PAGESETUPDLGA record{};
    record.lStructSize = structure_size(request.structure_size, sizeof record);
    record.hwndOwner = window_handle(request.owner);
    record.Flags = request.flags;
    record.ptPaperSize = {request.page.width, request.page.height};
    record.rtMinMargin = to_system(request.page.minimum_margins);
    record.rtMargin = to_system(request.page.margins);
    const std::int32_t result = ::PageSetupDlgA(&record);
    const GlobalBlock mode(record.hDevMode);
    const GlobalBlock names(record.hDevNames);
    return {
        result,
        {record.ptPaperSize.x, record.ptPaperSize.y, from_system(record.rtMinMargin), from_system(record.rtMargin)}};
  }

  std::int32_t show_about(const AboutRequest& request) override {
    return ::ShellAboutA(window_handle(request.owner), request.application.c_str(), request.further_text.c_str(),
                         nullptr);
  }

  std::uint32_t extended_error() override { return ::CommDlgExtendedError(); }
};

}  // namespace

Dialogs& native_dialogs() {
  static WindowsDialogs dialogs;
  return dialogs;
}

}  // namespace tornby
