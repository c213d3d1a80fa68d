#include "dialogs/clsDIALOGS.h"

#include <new>
#include <stdexcept>

#include "base/runtime_error.h"
#include "dialogs/dialog_error.h"
#include "dialogs/file_selection.h"

namespace tornby {
namespace {

constexpr StringView section = u"DIALOGS";

// The keys of the initialisation file.
namespace key {
constexpr StringView initial_folder = u"InitialDir";
constexpr StringView open_folder = u"LastOpenDir";
constexpr StringView open_filter = u"LastOpenFilter";
constexpr StringView open_file = u"LastOpenFile";
constexpr StringView save_folder = u"LastSaveDir";
constexpr StringView save_filter = u"LastSaveFilter";
constexpr StringView save_file = u"LastSaveFile";
}  // namespace key

constexpr std::size_t folder_capacity = 200;
constexpr std::size_t value_capacity = 250;

RuntimeError as_runtime_error(const std::exception& error) {
  if (const auto* own = dynamic_cast<const RuntimeError*>(&error)) return *own;
  if (dynamic_cast<const std::bad_alloc*>(&error) || dynamic_cast<const std::length_error*>(&error))
    return RuntimeError(StandardError::out_of_memory);
  return RuntimeError(StandardError::automation_error);
}

}  // namespace

clsDIALOGS::clsDIALOGS(Dialogs& dialogs, MessageBoxes& boxes, ProfileFiles& profiles, const Module& module,
                       const AnsiCodePage& code_page)
    : dialogs_(dialogs),
      boxes_(boxes),
      profiles_(profiles),
      module_(module),
      code_page_(code_page),
      profile_(profiles.folder(folder_capacity)),
      owner_(dialogs.desktop_window()) {
  if (!profile_.ends_with(u'\\')) profile_ += u'\\';
  profile_ += module.name() + u".ini";
  load();
}

clsDIALOGS::~clsDIALOGS() {
  if (!persistent_) return;
  try {
    save();
  } catch (const std::exception&) {
    // What cannot be remembered is forgotten.
  }
}

void clsDIALOGS::load() {
  const auto text = [this](StringView key, const String& otherwise) {
    String value = profiles_.read_text(profile_, section, key, value_capacity);
    return value.empty() ? otherwise : value;
  };
  const auto number = [this](StringView key) { return profiles_.read_number(profile_, section, key, 1); };
  const String own_folder = module_.folder();
  initial_folder_ = text(key::initial_folder, own_folder);
  last_open_ = {text(key::open_folder, own_folder), number(key::open_filter), text(key::open_file, {})};
  last_save_ = {text(key::save_folder, own_folder), number(key::save_filter), text(key::save_file, {})};
}

void clsDIALOGS::save() const {
  const auto text = [this](StringView key, StringView value) { profiles_.write_text(profile_, section, key, value); };
  const auto number = [&](StringView key, std::int32_t value) { text(key, widen(std::to_string(value))); };
  text(key::initial_folder, initial_folder_);
  text(key::open_folder, last_open_.folder);
  number(key::open_filter, last_open_.filter);
  text(key::open_file, last_open_.file);
  text(key::save_folder, last_save_.folder);
  number(key::save_filter, last_save_.filter);
  text(key::save_file, last_save_.file);
}

std::string clsDIALOGS::to_ansi(StringView text) const {
  const Bytes bytes = code_page_.encode(text);
  return std::string(bytes.begin(), bytes.end());
}

String clsDIALOGS::from_ansi(std::string_view bytes) const {
  return code_page_.decode(ByteView(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
}

void clsDIALOGS::report_failure() {
  error_code_ = static_cast<std::int32_t>(dialogs_.extended_error());
  error_text_ = dialogs::error_text(error_code_);
  if (show_errors_ && error_code_ != 0)
    boxes_.show({owner_, error_text_, u"DIALOG ERROR", BoxButtons::ok, BoxIcon::error});
}

bool clsDIALOGS::run(StringView caption, std::initializer_list<Step> steps) {
  for (auto step = steps.begin(); step != steps.end();) {
    try {
      (*step)();
      ++step;
    } catch (const std::exception& error) {
      const BoxAnswer answer = ask(caption, error);
      if (answer == BoxAnswer::ignore)
        ++step;
      else if (answer != BoxAnswer::retry)
        return false;
    }
  }
  return true;
}

BoxAnswer clsDIALOGS::ask(StringView caption, const std::exception& error) const {
  if (!show_errors_) return BoxAnswer::abort;
  try {
    const RuntimeError described = as_runtime_error(error);
    const String text = u"Error #:" + widen(std::to_string(described.number())) + u"\r\n" + described.description() +
                        u"\r\n" + error_text_;
    return boxes_.show({owner_, text, String(caption), BoxButtons::abort_retry_ignore, BoxIcon::error});
  } catch (const std::exception&) {
    return BoxAnswer::abort;  // nobody can be asked
  }
}

}  // namespace tornby
