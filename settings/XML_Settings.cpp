#include "settings/XML_Settings.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include "base/letter_case.h"
#include "base/runtime_error.h"
#include "base/search.h"
#include "checksums/clsApi.h"
#include "settings/document/child_blocks.h"
#include "settings/document/contents.h"
#include "settings/document/tag_finder.h"
#include "settings/document/text.h"
#include "settings/document/top_level.h"

namespace tornby {

using document::cut;
using document::length;
using document::make_tags;
using document::Position;
using document::position_of;
using document::replace_all;
using document::Tags;

namespace {

constexpr StringView line_break = u"\r\n";
constexpr StringView empty_line = u"\r\n\r\n";
constexpr StringView recent_files = u"RECENTFILES";

void append_recent_file(String& list, StringView path) {
  list.append(u"<FILE>").append(path).append(u"</FILE>").append(line_break);
}

/// Of the key in a group's block.
StringView value_in(StringView block, StringView key, StringView default_value) {
  const Tags tags = make_tags(upper(key));
  const Position opening = position_of(block, tags.opening);
  if (opening == 0) return default_value;
  const Position value = opening + length(tags.opening);
  const Position closing = position_of(block, tags.closing, value);
  return closing == 0 ? default_value : cut(block, value, closing - value);
}

StringView without_blanks_around(StringView text) {
  const auto first = text.find_first_not_of(u' ');
  return first == StringView::npos ? StringView() : text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

/// Whether there may be a file with content, readable or not.
bool holds_something(const Files& files, StringView name) {
  try {
    return files.size(name) != 0;
  } catch (const RuntimeError& error) {
    return error.number() != static_cast<std::int32_t>(StandardError::file_not_found) &&
           error.number() != static_cast<std::int32_t>(StandardError::path_not_found) &&
           error.number() != static_cast<std::int32_t>(StandardError::bad_file_name);
  } catch (const std::exception&) {
    return true;
  }
}

}  // namespace

/// Where a block stands: from `start` to right before `end`; at 0 when it was not found.
struct XML_Settings::Block {
  Position start = 0;
  Position end = 0;

  bool found() const { return start > 0; }
  StringView in(StringView text) const { return cut(text, start, end - start); }

  /// `locate(tag, from)` searches for one tag. Without a closing tag the block ends where a tag at position 0 would.
  template <class Locate>
  static Block of(const Tags& tags, Locate locate) {
    const Position start = locate(tags.opening, Position{1});
    if (start == 0) return {};
    return {start, locate(tags.closing, start) + length(tags.closing)};
  }
};

struct XML_Settings::Document {
  document::Contents contents;
  document::TagFinder finder;
};

XML_Settings::XML_Settings(const AnsiCodePage& code_page, const Files& files)
    : code_page_(&code_page), files_(&files), document_(std::make_unique<Document>()) {}

XML_Settings::XML_Settings(const XML_Settings& other)
    : ProgressMax(other.ProgressMax),
      ProgressCurrent(other.ProgressCurrent),
      code_page_(other.code_page_),
      files_(other.files_),
      file_name_(other.file_name_),
      unread_(other.unread_),
      document_(std::make_unique<Document>(*other.document_)),
      max_elements_(other.max_elements_) {}

XML_Settings& XML_Settings::operator=(const XML_Settings& other) {
  return *this = XML_Settings(other);
}

XML_Settings::XML_Settings(XML_Settings&& other) noexcept = default;
XML_Settings& XML_Settings::operator=(XML_Settings&& other) noexcept = default;
XML_Settings::~XML_Settings() = default;

const String& XML_Settings::GetContents() const {
  return document_->contents.text();
}

void XML_Settings::FileName(StringView path) {
  file_name_ = path;
  unread_ = true;
  change_to(clsApi(*code_page_, *files_).ApiReadFile(file_name_));
  unread_ = GetContents().empty() && holds_something(*files_, file_name_);
}

void XML_Settings::InsertGroup(StringView group, StringView text) {
  insert(group, find_block(group), text);
}

void XML_Settings::insert(StringView group, const Block& present, StringView text) {
  String changed;
  if (present.found()) {
    String rest;
    rest.reserve(GetContents().size());
    rest.append(GetContents(), 0, static_cast<std::size_t>(present.start - 1)).append(cut(GetContents(), present.end));
    changed = RemoveEmptyLines(rest);
  } else {
    changed = GetContents();
  }
  changed.append(line_break);
  // An empty name occurs in every text that is not empty itself.
  if (!text.empty() && (group.empty() || find_text(text, group) != StringView::npos)) {
    changed.append(text).append(line_break);
  } else {
    const Tags tags = make_tags(upper(group));
    changed.append(tags.opening).append(line_break).append(text).append(line_break).append(tags.closing);
  }
  change_to(std::move(changed));
}

void XML_Settings::change_to(String text) {
  document_->contents.assign(std::move(text));
  document_->finder.forget();
}

void XML_Settings::Save() {
  if (unread_) {
    try {
      files_->set_aside(file_name_);
    } catch (const std::exception&) {
      return;
    }
    unread_ = false;
  }
  clsApi(*code_page_, *files_).apiSaveFile(file_name_, RemoveEmptyLines(GetContents()));
}

String XML_Settings::RemoveEmptyLines(StringView text) {
  String result;
  result.reserve(text.size());
  while (!text.empty()) {
    if (text.starts_with(line_break)) {
      text.remove_prefix(line_break.size());
      continue;
    }
    // Several lines at once, up to the next empty one.
    const StringView lines = text.substr(0, text.find(empty_line));
    text.remove_prefix(lines.size());
    if (!result.empty()) result.append(line_break);
    result.append(lines);
  }
  if (result.ends_with(line_break)) result.resize(result.size() - line_break.size());
  return result;
}

std::unique_ptr<StringCollection> XML_Settings::ExtractBlock(StringView group) {
  const Block found = find_block(group);
  if (!found.found()) return nullptr;
  const String block(found.in(GetContents()));  // a handler may change the document
  auto items = std::make_unique<StringCollection>();
  auto maximum = static_cast<std::int32_t>(block.size());
  auto position = static_cast<std::int32_t>(length(group) - 1);
  ProgressMax.raise(maximum);
  document::ChildBlocks children(block);
  do {
    ProgressCurrent.raise(position);
    if (const auto child = children.at(position)) {
      items->add(String(child->inner));
      position = static_cast<std::int32_t>(child->end);
    }
    if (position == std::numeric_limits<std::int32_t>::max()) break;
    ++position;
  } while (position <= length(block));
  max_elements_ = maximum;
  return items;
}

StringCollection XML_Settings::ExtractBlock2(StringView name, bool whole) const {
  StringCollection items;
  const Tags tags = make_tags(name);
  for (Position from = 1; from <= length(GetContents());) {
    const Position start = position_of(GetContents(), tags.opening, from);
    if (start == 0) break;
    const Position end = position_of(GetContents(), tags.closing, start + 1);
    if (end == 0) break;
    if (whole)
      items.add(String(without_blanks_around(cut(GetContents(), start - 1, end - start + length(tags.closing) + 2))));
    else
      items.add(String(cut(GetContents(), start + length(tags.opening), end - start - length(tags.opening))));
    from = end + 1;
  }
  return items;
}

String XML_Settings::GetSetting(StringView group, StringView key, StringView default_value) const {
  if (const auto value = document_->contents.get(group, key, default_value)) return String(*value);
  const Block found = find_block(group);
  return String(found.found() ? value_in(found.in(GetContents()), key, default_value) : default_value);
}

void XML_Settings::UpdateRecent(StringView path) {
  Document earlier = *document_;
  const std::int32_t earlier_maximum = max_elements_;
  try {
    put_first(path);
    Save();
  } catch (const std::bad_alloc&) {
    *document_ = std::move(earlier);
    max_elements_ = earlier_maximum;
    throw;
  }
}

void XML_Settings::put_first(StringView path) {
  const String head(path);  // may be a part of the document, which is about to change
  if (!find_block(recent_files).found()) InsertGroup(recent_files, u"");
  String list;
  append_recent_file(list, head);
  if (const auto entries = ExtractBlock(recent_files))
    for (const String& entry : *entries)
      if (entry != head) append_recent_file(list, entry);
  InsertGroup(recent_files, RemoveEmptyLines(list));
}

std::vector<String> XML_Settings::ExtractRecent() {
  std::unique_ptr<StringCollection> entries;
  try {
    entries = ExtractBlock(recent_files);
  } catch (const RuntimeError&) {
  }
  if (!entries) return {};
  if (entries->empty()) return {String()};
  std::vector<String> files;
  for (const String& entry : *entries) files.push_back(entry);
  return files;
}

void XML_Settings::SaveSetting(StringView group, StringView key, StringView value) {
  if (document_->contents.set(group, key, value)) return document_->finder.forget();
  const Block found = find_block(group);
  String block(found.found() ? found.in(GetContents()) : StringView());
  const Block place = found.found() ? find_block(key, block) : Block();
  if (place.found()) {
    const String element(place.in(block));
    const String changed = replace_all(element, value_in(block, key, u"-1"), value);
    insert(group, found, replace_all(block, element, changed));
  } else {
    insert(group, found, AddNewValue(group, key, value, block));
  }
}

String XML_Settings::AddNewValue(StringView group, StringView key, StringView value, String& block) {
  const Tags tags = make_tags(upper(group));
  const Tags key_tags = make_tags(upper(key));
  block = replace_all(replace_all(block, tags.opening, u""), tags.closing, u"");
  block.append(key_tags.opening).append(value).append(key_tags.closing);
  String whole = tags.opening;
  whole.append(line_break).append(block).append(line_break).append(tags.closing);
  return RemoveEmptyLines(whole);
}

ValueCollection XML_Settings::SplitBlock(StringView text) const {
  ValueCollection values;
  document::ChildBlocks children(text);
  for (Position position = 1; position < length(text); ++position) {
    if (const auto child = children.at(position)) {
      values.Add(child->name, child->inner);
      position = child->end;
    }
  }
  return values;
}

StringCollection XML_Settings::SuperSplit(StringView name, StringView text) {
  StringCollection items;
  const Tags tags = make_tags(name);
  for (Position from = 1; from < length(text);) {
    const Position start = position_of(text, tags.opening, from);
    if (start == 0) break;
    const Position end = position_of(text, tags.closing, start);
    if (end == 0) break;
    items.add(String(cut(text, start, end - start + length(tags.closing))));
    from = end + 1;
  }
  return items;
}

String XML_Settings::GetBlock(StringView name, bool ignore_case) const {
  return inner_text(name, ignore_case, 1);
}

String XML_Settings::GetStructure(StringView name, bool ignore_case) const {
  return inner_text(name, ignore_case, 0);
}

StringCollection XML_Settings::FindNodes() const {
  return document::top_level_tags(GetContents());
}

String XML_Settings::GetNodeValue(StringView tag) const {
  if (tag.empty()) return {};
  const Position start = position_of(GetContents(), tag);
  if (start == 0) return {};
  const String closing = replace_all(tag, u"<", u"</");
  const Position count = position_of(GetContents(), closing, start) - start + length(closing);
  if (count < 0) return {};
  return document::remove_first(document::remove_first(cut(GetContents(), start, count), tag), closing);
}

/// A block of the document, found ignoring case.
XML_Settings::Block XML_Settings::find_block(StringView name) const {
  return Block::of(make_tags(upper(name)),
                   [this](StringView tag, Position from) { return document_->finder.find(GetContents(), tag, from); });
}

/// A block of `text` with upper-case tags; in place of an empty text the document is searched.
XML_Settings::Block XML_Settings::find_block(StringView name, StringView text) const {
  if (text.empty()) return find_block(name);
  return Block::of(make_tags(upper(name)),
                   [text](StringView tag, Position from) { return position_of(text, tag, from); });
}

/// What the first block of that name holds, less `trim` characters at each end. An empty document has no text to be
/// searched letter for letter, and no blocks.
String XML_Settings::inner_text(StringView name, bool ignore_case, Position trim) const {
  if (GetContents().empty()) return {};
  const Block block = ignore_case ? find_block(name) : find_block(name, GetContents());
  const Tags tags = make_tags(name);
  const Position start = block.start + length(tags.opening) + trim;
  const Position count = block.end - length(tags.closing) - trim - start;
  if (!block.found() || count < 0) return {};
  const StringView inner = cut(GetContents(), start, count);
  return ignore_case ? upper(inner) : String(inner);
}

}  // namespace tornby
