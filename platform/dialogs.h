// The system's own dialogs, as plain data: what a dialog is asked, and what it answers.
//
// Text is in the ANSI code page. Every record names the fields of the system's structure of the same purpose; what a
// record does not name is zero or null there. `structure_size` is the size on 32-bit systems; elsewhere the system's
// own size takes its place. `owner` is a window's handle; `result` is what the system's function returned.
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace tornby {

struct FileDialogRequest {
  std::uint32_t structure_size = 76;
  std::int32_t owner = 0;
  std::string filter;  // descriptions and patterns, each with its NUL, and one more NUL; empty for none
  std::int32_t filter_index = 0;
  std::string file;               // the whole buffer, which the answer returns
  std::uint32_t file_length = 0;  // the length told to the system, at most that of `file`
  std::string title;
  std::uint32_t title_length = 0;
  std::string initial_folder;
  std::string caption;
  std::uint32_t flags = 0;
};
struct FileDialogAnswer {
  std::int32_t result = 0;
  std::string file;
  std::int32_t filter_index = 0;
};

struct FolderDialogRequest {
  std::int32_t owner = 0;
  std::string instruction;
  std::uint32_t flags = 0;
};
struct FolderDialogAnswer {
  bool has_path = false;
  std::string path;  // the buffer of 260, filled when there is a path
};

struct LogicalFont {
  std::int32_t height = 0;
  std::int32_t weight = 0;
  std::uint8_t italic = 0;
  std::uint8_t character_set = 0;
  std::array<char, 32> face{};
};
struct FontDialogRequest {
  std::uint32_t structure_size = 60;
  std::int32_t owner = 0;
  LogicalFont font;
  std::uint32_t flags = 0;
  std::uint32_t color = 0;
  std::uint16_t font_type = 0;
  std::string style;  // the whole buffer, which the answer returns; the system may write 64 bytes
};
struct FontDialogAnswer {
  std::int32_t result = 0;
  LogicalFont font;
  std::int32_t point_size = 0;  // tenths of a point
  std::uint32_t color = 0;
  std::uint16_t font_type = 0;
  std::string style;
};

struct PrintDialogRequest {
  std::uint32_t structure_size = 66;
  std::int32_t owner = 0;
  std::uint32_t flags = 0;
};
struct PrintDialogAnswer {
  std::int32_t result = 0;
};

struct Margins {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;
};
struct Page {
  std::int32_t width = 0;
  std::int32_t height = 0;
  Margins minimum_margins;
  Margins margins;
};
struct PageSetupRequest {
  std::uint32_t structure_size = 84;
  std::int32_t owner = 0;
  std::uint32_t flags = 0;
  Page page;
};
struct PageSetupAnswer {
  std::int32_t result = 0;
  Page page;
};

struct AboutRequest {
  std::int32_t owner = 0;
  std::string application;
  std::string further_text;
};

/// The dialogs. Each call shows one, blocks until the user closes it, and keeps nothing that the system allocated for
/// it. A system without dialogs answers every call with a failure: the result 0, no path, extended error 0.
class Dialogs {
 public:
  virtual ~Dialogs() = default;

  virtual std::int32_t desktop_window() = 0;

  virtual FileDialogAnswer open_file(const FileDialogRequest& request) = 0;
  virtual FileDialogAnswer save_file(const FileDialogRequest& request) = 0;
  virtual FolderDialogAnswer browse_for_folder(const FolderDialogRequest& request) = 0;
  virtual FontDialogAnswer choose_font(const FontDialogRequest& request) = 0;
  virtual PrintDialogAnswer print(const PrintDialogRequest& request) = 0;
  virtual PageSetupAnswer set_up_page(const PageSetupRequest& request) = 0;
  virtual std::int32_t show_about(const AboutRequest& request) = 0;

  /// Why the calling thread's last dialog failed; 0 after a cancel.
  virtual std::uint32_t extended_error() = 0;
};

Dialogs& native_dialogs();

}  // namespace tornby
