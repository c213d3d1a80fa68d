#include "settings/document/contents.h"

#include <utility>

#include "base/letter_case.h"
#include "base/search.h"

namespace tornby::document {
namespace {

constexpr StringView line_break = u"\r\n";
constexpr std::size_t none = KeyIndex::none;

/// Whether the tags of this name can be no others than those of plain groups and keys.
bool makes_plain_tags(StringView name) {
  return name.find_first_of(u"<>") == StringView::npos && !name.starts_with(u'/');
}

bool is_plain_name(StringView name) {
  return !name.empty() && makes_plain_tags(name) && name.find_first_of(u"\r\n") == StringView::npos;
}

bool is_upper(StringView name) {
  for (const char16_t unit : name)
    if (upper(unit) != unit) return false;
  return true;
}

bool is_plain_value(StringView value) {
  return value.find_first_of(u"<>") == StringView::npos && value.find(u"\r\n\r\n") == StringView::npos;
}

bool skip(StringView& text, StringView what) {
  const bool there = text.starts_with(what);
  if (there) text.remove_prefix(what.size());
  return there;
}

std::size_t skip_breaks(StringView& text) {
  std::size_t count = 0;
  while (skip(text, line_break)) ++count;
  return count;
}

/// The name in the opening tag that the text begins with; empty when that is not plain.
StringView skip_opening_tag(StringView& text) {
  if (!skip(text, u"<")) return {};
  const StringView name = text.substr(0, text.find(u'>'));
  if (name.size() == text.size() || !is_plain_name(name) || !is_upper(name)) return {};
  text.remove_prefix(name.size() + 1);
  return name;
}

bool skip_closing_tag(StringView& text, StringView name) {
  return skip(text, u"</") && skip(text, name) && skip(text, u">");
}

}  // namespace

const String& Contents::text() const {
  if (!text_is_old_) return text_;
  std::size_t size = 0;
  for (const bool measuring : {true, false}) {
    if (!measuring) text_.reserve(size);
    const auto add = [&](StringView piece) {
      if (measuring)
        size += piece.size();
      else
        text_.append(piece);
    };
    const auto add_breaks = [&](std::size_t count) {
      for (; count > 0; --count) add(line_break);
    };
    for (const Group& group : groups_) {
      add_breaks(group.breaks_before);
      const StringView name = names_[group.name].text;
      for (const StringView piece : {StringView(u"<"), name, StringView(u">\r\n")}) add(piece);
      for (const Key& key : group.keys) {
        const StringView key_name = names_[key.name].text;
        for (const StringView piece : {StringView(u"<"), key_name, StringView(u">"), StringView(key.value),
                                       StringView(u"</"), key_name, StringView(u">\r\n")})
          add(piece);
      }
      for (const StringView piece : {StringView(u"</"), name, StringView(u">")}) add(piece);
    }
    add_breaks(breaks_at_end_);
  }
  text_is_old_ = false;
  return text_;
}

void Contents::assign(String text) {
  text_ = std::move(text);
  text_is_old_ = false;
  forget_lists();
  state_ = State::unknown;
}

std::optional<StringView> Contents::get(StringView group, StringView key, StringView default_value) {
  if (!is_plain()) return std::nullopt;
  const std::size_t group_name = find_name(group, KeyIndex::hash(group));
  if (group_name == none) return makes_plain_tags(group) ? std::optional(default_value) : std::nullopt;
  if (!names_[group_name].of_group) return std::nullopt;
  const std::size_t name = find_name(key, KeyIndex::hash(key));
  if (name == group_name || !makes_plain_tags(key)) return std::nullopt;
  const Key* found = name == none ? nullptr : find_key(*names_[group_name].group, name);
  return found ? StringView(found->value) : default_value;
}

bool Contents::set(StringView group, StringView key, StringView value) {
  if (!is_plain() || !is_plain_name(group) || !is_upper(group) || !is_plain_name(key) || !is_plain_value(value))
    return false;
  const std::uint32_t group_hash = KeyIndex::hash(group), key_hash = KeyIndex::hash(key);
  std::size_t group_name = find_name(group, group_hash);
  std::size_t name = find_name(key, key_hash);
  if ((group_name != none && !names_[group_name].of_group) || (name != none && names_[name].of_group)) return false;

  Key* present = group_name == none || name == none ? nullptr : find_key(*names_[group_name].group, name);
  if (present) {
    // Every occurrence of the present value is replaced, and an empty one has none.
    if (!present->value.empty()) {
      if (find_text(u"/" + names_[name].text, present->value) != StringView::npos) return false;
      present->value = String(value);
    }
    move_to_end(names_[group_name].group);
  } else if (group_name != none) {
    if (name == none) name = add_name(upper(key), key_hash);
    add_key(*names_[group_name].group, name, value);
    move_to_end(names_[group_name].group);
  } else {
    if (equal_ignoring_case(group, key)) return false;
    // Names that no group and no key has change nothing.
    if (name == none) name = add_name(upper(key), key_hash);
    group_name = add_name(group, group_hash);
    Groups added = make_group(group_name, breaks_at_end_ + 1);
    add_key(added.front(), name, value);
    append_group(std::move(added));
    breaks_at_end_ = 1;
  }
  text_is_old_ = true;
  text_ = String();
  return true;
}

bool Contents::is_plain() {
  if (state_ == State::unknown) {
    forget_lists();
    state_ = State::unknown;
    const bool plain = parse();
    if (!plain) forget_lists();
    state_ = plain ? State::plain : State::unusual;
  }
  return state_ == State::plain;
}

bool Contents::parse() {
  StringView rest = text_;
  for (;;) {
    const std::size_t breaks = skip_breaks(rest);
    if (rest.empty()) {
      breaks_at_end_ = breaks;
      return true;
    }
    if ((breaks == 0 && !groups_.empty()) || !parse_group(rest, breaks)) return false;
  }
}

bool Contents::parse_group(StringView& rest, std::size_t breaks_before) {
  const StringView name = skip_opening_tag(rest);
  if (name.empty() || !skip(rest, line_break)) return false;
  const std::uint32_t hash = KeyIndex::hash(name);
  if (find_name(name, hash) != none) return false;
  Groups added = make_group(add_name(name, hash), breaks_before);
  Group& group = added.front();
  names_[group.name].of_group = true;
  while (!rest.starts_with(u"</")) {
    const StringView key = skip_opening_tag(rest);
    if (key.empty()) return false;
    const StringView value = rest.substr(0, rest.find(u'<'));
    rest.remove_prefix(value.size());
    if (!is_plain_value(value) || !skip_closing_tag(rest, key) || !skip(rest, line_break)) return false;
    const std::uint32_t key_hash = KeyIndex::hash(key);
    std::size_t key_name = find_name(key, key_hash);
    if (key_name == none)
      key_name = add_name(key, key_hash);
    else if (names_[key_name].of_group || find_key(group, key_name))
      return false;
    add_key(group, key_name, value);
  }
  if (!skip_closing_tag(rest, name)) return false;
  append_group(std::move(added));
  return true;
}

std::size_t Contents::find_name(StringView name, std::uint32_t hash) const {
  return index_.find(hash, [&](std::size_t place) { return equal_ignoring_case(names_[place].text, name); });
}

std::size_t Contents::add_name(StringView name, std::uint32_t hash) {
  names_.push_back({String(name), hash, false, groups_.end()});
  try {
    index_.add(hash, names_.size() - 1);
  } catch (...) {
    names_.pop_back();
    throw;
  }
  return names_.size() - 1;
}

Contents::Key* Contents::find_key(Group& group, std::size_t name) {
  const std::size_t place =
      group.index.find(names_[name].hash, [&](std::size_t candidate) { return group.keys[candidate].name == name; });
  return place == none ? nullptr : &group.keys[place];
}

void Contents::add_key(Group& group, std::size_t name, StringView value) {
  group.keys.push_back({name, String(value)});
  try {
    group.index.add(names_[name].hash, group.keys.size() - 1);
  } catch (...) {
    group.keys.pop_back();
    throw;
  }
}

Contents::Groups Contents::make_group(std::size_t name, std::size_t breaks_before) const {
  Groups group;
  group.push_back({name, breaks_before, {}, {}});
  return group;
}

/// Cannot fail.
void Contents::append_group(Groups group) {
  even_breaks_ = even_breaks_ && group.front().breaks_before == (groups_.empty() ? 0 : 1);
  groups_.splice(groups_.end(), group);
  Name& name = names_[groups_.back().name];
  name.of_group = true;
  name.group = std::prev(groups_.end());
}

/// All empty lines go, and the group follows on a line of its own. Cannot fail.
void Contents::move_to_end(Groups::iterator group) {
  groups_.splice(groups_.end(), groups_, group);
  if (!even_breaks_)
    for (Group& other : groups_) other.breaks_before = 1;
  group->breaks_before = 1;
  even_breaks_ = groups_.size() > 1;
  if (even_breaks_) groups_.front().breaks_before = 0;
  breaks_at_end_ = 1;
}

void Contents::forget_lists() {
  groups_.clear();
  names_.clear();
  index_ = {};
  breaks_at_end_ = 0;
  even_breaks_ = true;
}

}  // namespace tornby::document
