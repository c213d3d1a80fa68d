// Opening, saving and choosing a folder.
#include <algorithm>

#include "base/runtime_error.h"
#include "dialogs/clsDIALOGS.h"
#include "dialogs/file_selection.h"

namespace tornby {
namespace {

// The system's flags for the file dialogs.
enum : std::uint32_t {
  hide_read_only = 0x4,
  keep_current_folder = 0x8,
  multiple_selection = 0x200,
  extension_different = 0x400,
  file_must_exist = 0x1000,
  create_prompt = 0x2000,
  explorer_style = 0x80000,
};
constexpr std::uint32_t save_flags = explorer_style | extension_different | keep_current_folder | hide_read_only;
constexpr std::uint32_t open_flags = save_flags | file_must_exist;

constexpr std::int32_t least_multiple_length = 2048;

constexpr std::uint32_t file_system_folders_only = 1;

}  // namespace

void clsDIALOGS::strFilter(StringView value) {
  filter_ = dialogs::convert_filter(value);
}

const String& clsDIALOGS::fstrReturnSingleFileName(std::int16_t index) const {
  if (index < 0 || static_cast<std::size_t>(index) >= files_.size())
    throw RuntimeError(StandardError::subscript_out_of_range);
  return files_[static_cast<std::size_t>(index)];
}

FileDialogRequest clsDIALOGS::file_request(const Choice& last, StringView caption, std::int32_t length) const {
  FileDialogRequest request;
  request.owner = owner_;
  request.filter = to_ansi(filter_);
  request.filter_index = last.filter;
  request.file = request.title = dialogs::name_buffer(length);
  request.initial_folder = to_ansi(initial_folder_.empty() ? last.folder : initial_folder_);
  request.caption = to_ansi(title_.empty() ? caption : title_);
  return request;
}

String clsDIALOGS::strGetOpenFileName(StringView) {
  FileDialogRequest request;
  FileDialogAnswer answer;
  String result;
  const bool finished =
      run(u"GET_OPEN_FILE_NAME_ERROR",
          {
              [&] {
                file_count_ = 0;
                const std::int32_t length = multiple_ ? std::max(name_length_, least_multiple_length) : name_length_;
                request = file_request(last_open_, u"Select File To Open", length);
                request.file_length = request.title_length = static_cast<std::uint32_t>(request.file.size());
                request.flags = multiple_ ? open_flags | multiple_selection : open_flags;
              },
              [&] { answer = dialogs_.open_file(request); },
              [&] {
                if (answer.result == 0) report_failure();
              },
              [&] {
                if (answer.result != 0) take_opened(from_ansi(answer.file), result);
              },
              [&] {
                if (answer.result != 0) last_open_.filter = answer.filter_index;
              },
              [&] { initial_folder_ = last_open_.folder; },
          });
  return finished ? result : String();
}

void clsDIALOGS::take_opened(StringView buffer, String& result) {
  if (multiple_) {
    file_count_ = dialogs::count_files(buffer);
    if (file_count_ > 1) return take_several(buffer, result);
  }
  result = dialogs::up_to_nul(buffer);
  last_open_.folder = dialogs::folder_part(result);
  last_open_.file = multiple_ ? dialogs::file_part(result) : StringView(result);
}

void clsDIALOGS::take_several(StringView buffer, String& result) {
  String folder(dialogs::up_to_nul(buffer));
  const std::size_t start = folder.size() + 1;
  const std::size_t end = buffer.find(StringView(u"\0\0", 2)) + 2;
  result = buffer.substr(start, end - start);
  if (!folder.ends_with(u'\\')) folder += u'\\';
  last_open_.folder = folder;
  last_open_.file = dialogs::file_part(result);

  StringView names = result;
  const auto count = std::min(static_cast<std::size_t>(file_count_), files_.size());
  for (std::size_t i = 0; i < count; ++i) {
    const StringView name = dialogs::up_to_nul(names);
    files_[i] = folder + String(name);
    names.remove_prefix(name.size() + 1);
  }
}

String clsDIALOGS::strGetSaveFileName(StringView) {
  FileDialogRequest request;
  FileDialogAnswer answer;
  String result;
  const bool finished = run(u"GET_SAVE_FILE_NAME_ERROR",
                            {
                                [&] {
                                  request = file_request(last_save_, u"Save File", name_length_);
                                  request.file_length = request.title_length = static_cast<std::uint32_t>(name_length_);
                                  request.flags = create_prompt_ ? save_flags | create_prompt : save_flags;
                                },
                                [&] { answer = dialogs_.save_file(request); },
                                [&] {
                                  if (answer.result == 0) report_failure();
                                },
                                [&] {
                                  if (answer.result == 0) return;
                                  result = dialogs::up_to_nul(from_ansi(answer.file));
                                  last_save_.folder = dialogs::folder_part(result);
                                  last_save_.file = result;
                                },
                                [&] {
                                  if (answer.result != 0) last_save_.filter = answer.filter_index;
                                },
                                [&] { initial_folder_ = last_save_.folder; },
                            });
  return finished ? result : String();
}

String clsDIALOGS::fstrBrowseForFolder(std::int32_t owner) {
  const FolderDialogAnswer answer =
      dialogs_.browse_for_folder({owner, to_ansi(u"Select Folder"), file_system_folders_only});
  return answer.has_path ? String(dialogs::up_to_nul(from_ansi(answer.path))) : String();
}

}  // namespace tornby
