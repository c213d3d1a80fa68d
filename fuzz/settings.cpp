// Any operations on any document, most of them damaged, held to the slow reference; and any searches for tags.
#include "settings/XML_Settings.h"

#include <memory>
#include <vector>

#include "base/letter_case.h"
#include "fuzz/document_reference.h"
#include "fuzz/target.h"
#include "settings/document/tag_finder.h"

namespace tornby::fuzz {
namespace {

using testing::DocumentReference;

/// What an operation returned or raised, and the state that it left, as one text.
class Outcome {
 public:
  template <class Operation>
  explicit Outcome(Operation operation) {
    try {
      operation(*this);
    } catch (const RuntimeError& error) {
      text_ += u"raised " + widen(std::to_string(error.number()));
    }
  }
  void add(StringView text) { text_.append(text).append(u"|"); }
  void add(int number) { add(widen(std::to_string(number))); }
  template <class Texts>
  void add_all(const Texts& texts) {
    for (const String& text : texts) add(text);
    add(u"end");
  }
  bool operator==(const Outcome&) const = default;

 private:
  String text_;
};

/// Words, tags and texts, few and short, so that they meet.
class Dice {
 public:
  explicit Dice(Input& input) : input_(&input) {}
  unsigned below(unsigned count) { return input_->below(count); }
  bool one_in(unsigned count) { return input_->one_in(count); }

  String word() {
    static const String words[] = {u"",       u"A",     u"a",           u"B",     u"AB", u"ab", u"OPT",
                                   u"Opt",    u"FILE",  u"RECENTFILES", u"1",     u"-1", u" ",  u"\u00E9",
                                   u"\u00DF", u"/A",    u"</A>",        u"A></A", u"<",  u">",  u"I",
                                   u"FI",     u"WIDTH", u"TH",          u"\r\n"};
    return words[below(std::size(words))];
  }
  String tag() {
    static const StringView shapes[] = {u"<", u"</", u"<", u"</", u"<<", u"< "};
    String tag(shapes[below(std::size(shapes))]);
    tag += word();
    if (!one_in(12)) tag += u'>';
    return tag;
  }
  String text(unsigned most) {
    String text;
    for (unsigned piece = below(most + 1); piece > 0; --piece) {
      switch (below(7)) {
        case 0:
        case 1:
          text += tag();
          break;
        case 2:
          text += word();
          break;
        case 3:
          text += one_in(6) ? u"\n" : u"\r\n";
          break;
        case 4: {
          const String name = word();
          text += u"<" + name + u">" + this->text(most / 3) + u"</" + name + u">";
          break;
        }
        case 5: {
          const String name = word();
          text += u"<" + name + u">\r\n" + this->text(most / 2) + u"\r\n</" + name + u">\r\n";
          break;
        }
        case 6:
          if (one_in(8)) text += u"<RECENTFILES>\r\n<FILE>x</FILE>\r\n</RECENTFILES>";
          break;
      }
    }
    return text;
  }

  /// As SaveSetting writes it, or nearly so.
  String plain_text() {
    String text;
    for (unsigned group = below(4); group > 0; --group) {
      const String name = one_in(20) ? word() : String(1, u" AG1"[group]);
      text += u"<" + name + u">\r\n";
      for (unsigned key = below(4); key > 0; --key) {
        const String key_name(1, u" IWT"[one_in(8) ? 1 : key]);
        text += u"<" + key_name + u">" + plain_word() + u"</" + key_name + u">\r\n";
      }
      text += u"</" + name + u">";
      for (unsigned line = one_in(4) ? below(4) : 1; line > 0; --line) text += u"\r\n";
    }
    return text;
  }
  String plain_word() {
    static const String words[] = {u"A", u"G", u"1", u"I", u"W", u"T", u"a", u"i", u"v", u"v\r\nv", u""};
    return one_in(20) ? word() : words[below(std::size(words))];
  }

 private:
  Input* input_;
};

/// A handler that sets its figure to another now and then, as the bytes say.
auto meddler(ByteView bytes, std::vector<int>& seen) {
  return [input = std::make_shared<Input>(bytes), &seen](int& figure) {
    seen.push_back(figure);
    if (input->one_in(10)) figure += static_cast<int>(input->below(12)) - 4;
  };
}

}  // namespace

void settings(Input input) {
  Dice dice(input);
  XML_Settings actual;
  DocumentReference expected;
  std::vector<int> actual_seen, expected_seen;
  if (dice.one_in(3)) {
    const ByteView meddling = input.take(10);
    actual.ProgressMax = meddler(meddling, actual_seen);
    expected.progress_max = meddler(meddling, expected_seen);
    actual.ProgressCurrent = meddler(meddling, actual_seen);
    expected.progress_current = meddler(meddling, expected_seen);
  }
  const bool plain = dice.one_in(2);
  expected.contents = plain ? dice.plain_text() : dice.text(12);
  actual.SetContents(expected.contents);

  for (unsigned step = 1 + dice.below(12); step > 0; --step) {
    const String a = plain ? dice.plain_word() : dice.word(), b = plain ? dice.plain_word() : dice.word();
    const String c = plain ? dice.plain_word() : dice.one_in(4) ? dice.text(4) : dice.word();
    const bool flag = dice.one_in(2);
    const unsigned operation = plain && dice.one_in(2) ? 7 : dice.below(15);
    const Outcome actually([&](Outcome& out) {
      switch (operation) {
        case 0:
          return actual.InsertGroup(a, c);
        case 1:
          return out.add(XML_Settings::RemoveEmptyLines(c));
        case 2:
          if (const auto items = actual.ExtractBlock(a)) out.add_all(*items);
          return out.add(actual.MaxElements());
        case 3:
          return out.add_all(actual.ExtractBlock2(a, flag));
        case 4:
          return out.add(actual.GetSetting(a, b, c));
        case 5:
          return actual.UpdateRecent(a);
        case 6:
          return out.add_all(actual.ExtractRecent());
        case 7:
        case 8:
          return actual.SaveSetting(a, b, c);
        case 9: {
          String block = c;
          out.add(XML_Settings::AddNewValue(a, b, u"7", block));
          return out.add(block);
        }
        case 10:
          for (const auto& pair : actual.SplitBlock(flag ? c : actual.GetContents())) {
            out.add(pair->Key());
            out.add(pair->Value());
          }
          return;
        case 11:
          return out.add_all(XML_Settings::SuperSplit(a, flag ? c : actual.GetContents()));
        case 12:
          out.add(actual.GetBlock(a, flag));
          return out.add(actual.GetStructure(a, flag));
        case 13:
          return out.add_all(actual.FindNodes());
        case 14:
          return out.add(actual.GetNodeValue(flag ? u"<" + a + u">" : c));
      }
    });
    const Outcome expectedly([&](Outcome& out) {
      switch (operation) {
        case 0:
          return expected.insert_group(a, c);
        case 1:
          return out.add(DocumentReference::remove_empty_lines(c));
        case 2:
          if (const auto items = expected.extract_block(a)) out.add_all(*items);
          return out.add(expected.max_elements);
        case 3:
          return out.add_all(expected.extract_block2(a, flag));
        case 4:
          return out.add(expected.get_setting(a, b, c));
        case 5:
          return expected.update_recent(a);
        case 6:
          return out.add_all(expected.extract_recent());
        case 7:
        case 8:
          return expected.save_setting(a, b, c);
        case 9: {
          String block = c;
          out.add(DocumentReference::add_new_value(a, b, u"7", block));
          return out.add(block);
        }
        case 10:
          for (const auto& [key, value] : expected.split_block(flag ? c : expected.contents)) {
            out.add(key);
            out.add(value);
          }
          return;
        case 11:
          return out.add_all(DocumentReference::super_split(a, flag ? c : expected.contents));
        case 12:
          out.add(expected.get_block(a, flag));
          return out.add(expected.get_structure(a, flag));
        case 13:
          return out.add_all(expected.find_nodes());
        case 14:
          return out.add(expected.get_node_value(flag ? u"<" + a + u">" : c));
      }
    });
    REQUIRE(actually == expectedly);
    REQUIRE(actual.GetContents() == expected.contents);
    REQUIRE(actual_seen == expected_seen);
  }
}

// A finder that has made its index, and one that has just forgotten it, find what reading through the text finds.
void tag_finder(Input input) {
  Dice dice(input);
  document::TagFinder finder;
  const String text = dice.text(12);
  for (int search = 0; search < 60; ++search) {
    const String tag = (dice.one_in(2) ? u"<" : u"</") + upper(dice.word()) + u">";
    const auto from = static_cast<document::Position>(1 + dice.below(static_cast<unsigned>(text.size()) % 250 + 1));
    REQUIRE(finder.find(text, tag, from) == document::position_of_tag(text, tag, from));
  }
}

}  // namespace tornby::fuzz
