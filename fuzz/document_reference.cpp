#include "fuzz/document_reference.h"

#include "base/letter_case.h"
#include "base/runtime_error.h"

namespace tornby::testing {
namespace {

[[noreturn]] void fail(StandardError error) {
  throw RuntimeError(error);
}

int len(const String& text) {
  return static_cast<int>(text.size());
}

String mid(const String& text, int start, int count) {
  if (start < 1 || count < 0) fail(StandardError::invalid_procedure_call);
  String result;
  for (int i = start; i < start + count && i <= len(text); ++i) result += text[static_cast<std::size_t>(i - 1)];
  return result;
}

String mid(const String& text, int start) {
  return mid(text, start, len(text));
}

bool stands_at(const String& text, int position, const String& what) {
  return mid(text, position, len(what)) == what;
}

int in_str(int start, const String& text, const String& what) {
  if (start < 1) fail(StandardError::invalid_procedure_call);
  for (int i = start; i <= len(text); ++i)
    if (stands_at(text, i, what)) return i;
  return 0;
}

String replace(const String& text, const String& what, const String& by, int most = -1) {
  String result;
  for (int i = 1; i <= len(text);) {
    if (!what.empty() && most != 0 && stands_at(text, i, what)) {
      result += by;
      i += len(what);
      --most;
    } else {
      result += mid(text, i, 1);
      ++i;
    }
  }
  return result;
}

const String crlf = u"\r\n";
const String recent = u"RECENTFILES";

String opening(const String& name) {
  return u"<" + name + u">";
}
String closing(const String& name) {
  return u"</" + name + u">";
}

String wrap_block(const String& name, const String& text) {
  if (in_str(1, text, name) > 0) return text + crlf;
  return opening(upper(name)) + crlf + text + crlf + closing(upper(name));
}

String find_value(const String& text, const String& key, const String& otherwise) {
  const int tag = in_str(1, text, opening(upper(key)));
  if (tag == 0) return otherwise;
  const int value = tag + len(opening(key));
  const int end = in_str(value, text, closing(upper(key)));
  return end == 0 ? otherwise : mid(text, value, end - value);
}

}  // namespace

DocumentReference::Found DocumentReference::find_block(const String& name, const String& text, int start,
                                                       bool ignore_case, bool trim_one) const {
  Found r;
  try {
    const String searched = !text.empty() ? text : ignore_case ? upper(contents) : contents;
    const int p = in_str(start, searched, opening(upper(name)));
    if (p == 0) return r;
    r.found = true;
    r.start = p;
    const int q = in_str(p, searched, closing(upper(name)));
    r.end = q + len(closing(name));
    if (r.end > p) {
      const int a = len(opening(name)) + (trim_one ? 1 : 0);
      const int b = len(closing(name)) + (trim_one ? 1 : 0);
      r.inner = mid(searched, p + a, r.end - p - a - b);
    }
  } catch (const RuntimeError&) {
  }
  return r;
}

String DocumentReference::next_tag_name(const String& text, int position) {
  for (int s = position; s <= len(text); ++s) {
    if (mid(text, s, 1) != u"<") continue;
    const int t = in_str(s, text, u">");
    if (t == 0) return u"";
    return replace(replace(upper(mid(text, s, t - s + 1)), u"<", u""), u">", u"");
  }
  return u"";
}

String DocumentReference::remove_empty_lines(const String& text) {
  Texts lines(1);
  for (int i = 1; i <= len(text); ++i) {
    if (stands_at(text, i, crlf)) {
      lines.emplace_back();
      ++i;
    } else {
      lines.back() += mid(text, i, 1);
    }
  }
  String result;
  for (const String& line : lines)
    if (!line.empty()) result += (result.empty() ? u"" : crlf) + line;
  return result;
}

void DocumentReference::insert_group(const String& group, const String& text) {
  const Found r = find_block(group, u"", 1, true, true);
  if (r.found) contents = remove_empty_lines(mid(contents, 1, r.start - 1) + mid(contents, r.end));
  contents = contents + crlf + wrap_block(group, text);
}

String DocumentReference::get_setting(const String& group, const String& key, const String& otherwise) const {
  const Found r = find_block(group, u"", 1, true, true);
  if (!r.found) return otherwise;
  return find_value(mid(contents, r.start, r.end - r.start), key, otherwise);
}

void DocumentReference::save_setting(const String& group, const String& key, const String& value) {
  const Found r = find_block(group, u"", 1, true, true);
  String block, new_group;
  if (!r.found) {
    new_group = add_new_value(group, key, value, block);
  } else {
    block = mid(contents, r.start, r.end - r.start);
    const Found k = find_block(key, block, 1, true, true);
    if (!k.found) {
      new_group = add_new_value(group, key, value, block);
    } else {
      const String element = mid(block, k.start, k.end - k.start);
      const String current = get_setting(group, key, u"-1");
      new_group = replace(block, element, replace(element, current, value));
    }
  }
  insert_group(group, new_group);
}

String DocumentReference::add_new_value(const String& group, const String& key, const String& value, String& block) {
  block = replace(block, opening(upper(group)), u"");
  block = replace(block, closing(upper(group)), u"");
  block = block + opening(upper(key)) + value + closing(upper(key));
  return remove_empty_lines(opening(upper(group)) + crlf + block + crlf + closing(upper(group)));
}

std::optional<DocumentReference::Texts> DocumentReference::extract_block(const String& group) {
  const Found r = find_block(group, u"", 1, true, true);
  if (!r.found) return std::nullopt;
  const String block = mid(contents, r.start, r.end - r.start);
  int maximum = len(block);
  int position = len(group) - 1;
  progress_max(maximum);
  Texts items;
  String name;
  do {
    progress_current(position);
    try {
      name = next_tag_name(block, position);
    } catch (const RuntimeError&) {
    }
    const Found c = find_block(name, block, position, true, true);
    if (c.found && c.end > c.start) {
      try {
        const String element = mid(block, c.start, c.end - c.start);
        const int a = len(opening(name)), b = len(closing(name));
        items.push_back(mid(element, a + 1, len(element) - a - b));
        position = c.end;
      } catch (const RuntimeError&) {
      }
    }
    position = position + 1;
  } while (position <= len(block));
  max_elements = maximum;
  return items;
}

DocumentReference::Texts DocumentReference::extract_block2(const String& name, bool whole) const {
  Texts items;
  int p = 1;
  do {
    p = in_str(p, contents, opening(name));
    if (p == 0) break;
    const int e = in_str(p + 1, contents, closing(name));
    if (e <= p) break;
    if (whole) {
      String item = mid(contents, p - 1, (e - p) + len(closing(name)) + 2);
      while (!item.empty() && item.front() == u' ') item.erase(0, 1);
      while (!item.empty() && item.back() == u' ') item.pop_back();
      items.push_back(item);
    } else {
      items.push_back(mid(contents, p + len(opening(name)), e - p - len(opening(name))));
    }
    p = e + 1;
  } while (p <= len(contents));
  return items;
}

DocumentReference::Texts DocumentReference::super_split(const String& name, const String& text) {
  Texts items;
  const int last = len(text) - 1;
  int position = 1, next = 0;
  do {
    const int s = in_str(position, text, opening(name));
    if (s >= 1) {
      const int e = in_str(s, text, closing(name));
      if (e == 0) break;  // would start again from the front, for ever
      if (e > s) items.push_back(mid(text, s, e - s + len(closing(name))));
      next = e + 1;
    } else {
      next = position + 1;
    }
    position = next;
  } while (next <= last);
  return items;
}

DocumentReference::Pairs DocumentReference::split_block(const String& text) const {
  Pairs pairs;
  int position = 1;
  const int last = len(text) - 1;
  do {
    const String name = next_tag_name(text, position);
    const Found c = find_block(name, text, position, true, true);
    if (c.found && c.end > c.start) {
      try {
        const String element = mid(text, c.start, c.end - c.start);
        const int a = len(opening(name)), b = len(closing(name));
        const String inner = mid(element, a + 1, len(element) - a - b);
        bool used = false;
        for (const auto& pair : pairs) used = used || (!name.empty() && pair.first == name);
        if (!used) pairs.emplace_back(name, inner);
        position = c.end;
      } catch (const RuntimeError&) {
      }
    }
    position = position + 1;
  } while (position <= last);
  return pairs;
}

String DocumentReference::get_block(const String& name, bool ignore_case) const {
  const Found r = find_block(name, u"", 1, ignore_case, true);
  return r.found ? r.inner : u"";
}

String DocumentReference::get_structure(const String& name, bool ignore_case) const {
  const Found r = find_block(name, u"", 1, ignore_case, false);
  return r.found ? r.inner : u"";
}

DocumentReference::Texts DocumentReference::find_nodes() const {
  Texts tags;
  int position = 1;
  while (position <= len(contents)) {
    const int s = in_str(position, contents, u"<");
    const int t = s == 0 ? 0 : in_str(s, contents, u">");
    if (t != 0) {
      const String tag = mid(contents, s, t - s + 1);
      const int c = in_str(t, contents, replace(tag, u"<", u"</"));
      if (c != 0) {
        for (const String& other : tags)
          if (upper(other) == upper(tag)) fail(StandardError::duplicate_key);
        tags.push_back(tag);
        position = c;
      }
    }
    position = position + 1;
  }
  return tags;
}

String DocumentReference::get_node_value(const String& tag) const {
  try {
    const int s = in_str(1, contents, tag);
    const String end_tag = replace(tag, u"<", u"</");
    const int e = in_str(s, contents, end_tag);
    const String element = mid(contents, s, e - s + len(end_tag));
    return replace(replace(element, tag, u"", 1), end_tag, u"", 1);
  } catch (const RuntimeError&) {
    return u"";
  }
}

void DocumentReference::update_recent(const String& path) {
  if (!find_block(recent, u"", 1, true, true).found) insert_group(recent, u"");
  String list = u"<FILE>" + path + u"</FILE>" + crlf;
  if (const auto entries = extract_block(recent))
    for (const String& entry : *entries)
      if (entry != path) list = list + u"<FILE>" + entry + u"</FILE>" + crlf;
  insert_group(recent, remove_empty_lines(list));
  save();
}

DocumentReference::Texts DocumentReference::extract_recent() {
  try {
    const auto entries = extract_block(recent);
    if (!entries) return {};
    return entries->empty() ? Texts(1) : *entries;
  } catch (const RuntimeError&) {
    return {};
  }
}

}  // namespace tornby::testing
