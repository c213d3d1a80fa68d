// Opening, saving and choosing a folder.
#include <algorithm>
#include <utility>
#include <vector>

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

bool clsDIALOGS::fill(FileDialogRequest& request, StringView prompt, const Choice& last, StringView caption,
                      std::int32_t length, std::uint32_t flags) {
  return run(prompt,
             {
                 [&] { request.owner = owner_; },
                 [&] { request.filter = to_ansi(filter_); },
                 [&] { request.filter_index = last.filter; },
                 [&] {
                   request.title = dialogs::name_buffer(length);
                   request.file = request.title;
                   request.file_length = request.title_length = static_cast<std::uint32_t>(request.file.size());
                 },
                 [&] { request.initial_folder = to_ansi(initial_folder_.empty() ? last.folder : initial_folder_); },
                 [&] { request.caption = to_ansi(title_.empty() ? caption : title_); },
                 [&] { request.flags = flags; },
             });
}

String clsDIALOGS::strGetOpenFileName(StringView) {
  FileDialogRequest request;
  FileDialogAnswer answer;
  String result;
  file_count_ = 0;
  constexpr StringView prompt = u"GET_OPEN_FILE_NAME_ERROR";
  const std::int32_t length = multiple_ ? std::max(name_length_, least_multiple_length) : name_length_;
  const std::uint32_t flags = multiple_ ? open_flags | multiple_selection : open_flags;
  const bool finished = fill(request, prompt, last_open_, u"Select File To Open", length, flags) &&
                        run(prompt, {
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
  return finished ? std::move(result) : String();
}

void clsDIALOGS::take_opened(StringView buffer, String& result) {
  const std::int32_t count = multiple_ ? dialogs::count_files(buffer) : 0;
  if (count > 1) {
    take_several(buffer, count, result);
  } else {
    String path(dialogs::up_to_nul(buffer));
    String folder(dialogs::folder_part(path));
    last_open_.file = multiple_ ? dialogs::file_part(path) : StringView(path);
    last_open_.folder = std::move(folder);
    result = std::move(path);
  }
  file_count_ = count;
}

void clsDIALOGS::take_several(StringView buffer, std::int32_t count, String& result) {
  String folder(dialogs::up_to_nul(buffer));
  const std::size_t start = folder.size() + 1;
  const std::size_t end = buffer.find(StringView(u"\0\0", 2)) + 2;
  String all(buffer.substr(start, end - start));
  if (!folder.ends_with(u'\\')) folder += u'\\';

  StringView names = all;
  std::vector<String> paths(std::min(static_cast<std::size_t>(count), files_.size()), folder);
  for (String& path : paths) {
    const StringView name = dialogs::up_to_nul(names);
    path += name;
    names.remove_prefix(name.size() + 1);
  }
  last_open_.file = dialogs::file_part(all);
  last_open_.folder = std::move(folder);
  std::ranges::move(paths, files_.begin());
  result = std::move(all);
}

String clsDIALOGS::strGetSaveFileName(StringView) {
  FileDialogRequest request;
  FileDialogAnswer answer;
  String result;
  constexpr StringView prompt = u"GET_SAVE_FILE_NAME_ERROR";
  const std::uint32_t flags = create_prompt_ ? save_flags | create_prompt : save_flags;
  const bool finished = fill(request, prompt, last_save_, u"Save File", name_length_, flags) &&
                        run(prompt, {
                                        [&] {
                                          if (!request.file.empty())  // this dialog hears of less room than there is
                                            request.file_length = request.title_length =
                                                static_cast<std::uint32_t>(name_length_);
                                        },
                                        [&] { answer = dialogs_.save_file(request); },
                                        [&] {
                                          if (answer.result == 0) report_failure();
                                        },
                                        [&] {
                                          if (answer.result == 0) return;
                                          String path(dialogs::up_to_nul(from_ansi(answer.file)));
                                          String folder(dialogs::folder_part(path));
                                          last_save_.file = path;
                                          last_save_.folder = std::move(folder);
                                          result = std::move(path);
                                        },
                                        [&] {
                                          if (answer.result != 0) last_save_.filter = answer.filter_index;
                                        },
                                        [&] { initial_folder_ = last_save_.folder; },
                                    });
  return finished ? std::move(result) : String();
}

String clsDIALOGS::fstrBrowseForFolder(std::int32_t owner) {
  const FolderDialogAnswer answer =
      dialogs_.browse_for_folder({owner, to_ansi(u"Select Folder"), file_system_folders_only});
  return answer.has_path ? String(dialogs::up_to_nul(from_ansi(answer.path))) : String();
}

}  // namespace tornby
