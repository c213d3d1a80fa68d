// Every property of the three controls: what a write does, what comes back, and how a bag keeps it.
#include <gtest/gtest.h>

#include <optional>

#include "controls/kelBrowseButton.h"
#include "controls/kelHyperLabel.h"
#include "controls/kelLabel.h"
#include "controls/recording_host.h"

namespace tornby {
namespace {

using namespace testing;

template <class T>
struct Row {
  const char* name;
  PropertyValue fresh;  // of a new control
  PropertyValue value;  // another one
  PropertyValue (*get)(const T&);
  void (*put)(T&, const PropertyValue&);
  Log log;                                                 // of a write
  bool (*shown)(RecordingHost&, PropertyValue) = nullptr;  // whether an element has it
  std::optional<PropertyValue> missing = std::nullopt;     // read where a bag has none, if not as in a new one
};

#define PROPERTY(control, name, fresh, value, ...)                                                                   \
  {                                                                                                                  \
#name, fresh, value,                                                                                             \
        [](const control&                                                                                            \
               c) { return PropertyValue(c.name()); },                                                               \
                                                    [](control & c,                                                  \
                                                       const PropertyValue&                                          \
                                                           v) { c.name(std::get<decltype(c.name())>(v)); },          \
                                                                                                         __VA_ARGS__ \
  }

constexpr std::int16_t one = 1;
const PicturePointer picture = std::make_shared<FixedPicture>(1270, 635);
const tornby::Font ambient{.name = u"Ambient"};
const tornby::Font other_font{.name = u"F", .size = 20, .italic = true};

String wide(const std::string& name) {
  return String(name.begin(), name.end());
}

template <class T>
void check(const std::vector<Row<T>>& rows, Log write_order) {
  Log read_order;
  MemoryBag full;
  for (const Row<T>& row : rows) {
    read_order.push_back(row.name);
    full.values[wide(row.name)] = row.value;
    RecordingHost host;
    T control(host);
    control.InitProperties();
    EXPECT_TRUE(row.get(control) == row.fresh) << row.name << " of a new one";
    host.take();
    row.put(control, row.value);
    EXPECT_EQ(host.take(), row.log) << row.name;
    EXPECT_TRUE(row.get(control) == row.value) << row.name << " read back";
    EXPECT_TRUE(!row.shown || row.shown(host, row.value)) << row.name << " shown";
    MemoryBag bag;
    control.WriteProperties(bag);
    EXPECT_TRUE(bag.values[wide(row.name)] == row.value) << row.name << " stored";
    control.ReadProperties(MemoryBag());
    EXPECT_TRUE(row.get(control) == row.missing.value_or(row.fresh)) << row.name << " missing in a bag";
  }
  RecordingHost host;
  T control(host);
  control.ReadProperties(full);
  EXPECT_EQ(full.read_order, read_order);
  MemoryBag copy;
  control.WriteProperties(copy);
  EXPECT_EQ(copy.written, write_order);
  EXPECT_TRUE(copy.values == full.values);
  for (const Row<T>& row : rows) EXPECT_TRUE(!row.shown || row.shown(host, row.value)) << row.name << " read and shown";
  for (const std::string& line : host.take()) EXPECT_FALSE(line.starts_with("changed")) << "reading is no change";
}

TEST(Properties, OfTheLabel) {
  using T = kelLabel;
  const auto after = [](const char* name, Log drawn = {}) {
    drawn.insert(drawn.begin(), "changed " + std::string(name));
    return drawn;
  };
  const Log frame = {"clear", "frame 0,0,100,40"};
  check<T>({PROPERTY(T, BackColor, system_color::button_face, Color{7}, after("BackColor", frame)),
            PROPERTY(T, Caption, String(u"Label1"), String(u"x"), after("Caption", frame)),
            PROPERTY(T, Font, ambient, other_font, after("Font")),
            PROPERTY(T, ForeColor, system_color::button_text, Color{7}, after("ForeColor")),
            PROPERTY(T, Enabled, true, false, after("Enabled", frame)),
            PROPERTY(T, OverrideAutoAlign, false, true, after("OverrideAutoAlign")),
            PROPERTY(T, Alignment, std::int16_t{0}, std::int16_t{2}, after("Alignment")),
            PROPERTY(T, DisplayRubberBand, true, false, after("DisplayRubberBand", {"clear"})),
            PROPERTY(T, AutoSize, true, false, after("AutoSize", frame)),
            PROPERTY(T, VerticalAlignment, 1, 2, after("VerticalAlignment", frame)),
            PROPERTY(T, WordWrap, false, true, after("WordWrap")),
            PROPERTY(T, UseBorderLines, false, true, after("UseBorderLines", {"border 1"}),
                     [](RecordingHost& host, PropertyValue) { return host.border_style() == 1; })},
           {"BackColor", "Caption", "Font", "ForeColor", "Enabled", "OverrideAutoAlign", "Alignment",
            "DisplayRubberBand", "AutoSize", "VerticalAlignment", "WordWrap", "UseBorderLines"});
  RecordingHost host;
  kelLabel label(host);
  label.InitProperties();
  MemoryBag bag;
  label.WriteProperties(bag);
  EXPECT_EQ(bag.written, Log{"DisplayRubberBand"}) << "its stored default equals neither of its values";
}

TEST(Properties, OfTheLink) {
  using T = kelHyperLabel;
  check<T>(
      {PROPERTY(T, Caption, String(u"Link7"), String(u"x"), {}),
       PROPERTY(T, BackColor, system_color::button_face, Color{7}, {"changed BackColor"}),
       PROPERTY(T, Font, ambient, other_font, {"changed Font"}),
       PROPERTY(T, Alignment, std::int16_t{0}, std::int16_t{2}, {"changed Alignment"}),
       PROPERTY(T, ClickColor, Color{255}, Color{7}, {"changed ClickColor"}),
       PROPERTY(T, LinkColor, Color{0xD54600}, Color{7}, {"changed LinkColor"}),
       PROPERTY(T, HoverColor, system_color::button_shadow, Color{7}, {"changed HoverColor"}),
       PROPERTY(T, Picture, PicturePointer(), picture, {"changed Picture"},
                [](RecordingHost& host, PropertyValue v) {
                  return host.picture->shown == std::get<PicturePointer>(v) && host.picture->visible();
                }),
       PROPERTY(T, UseDynamicHeight, false, true, {"changed UseDynamicHeight"},
                [](RecordingHost& host, PropertyValue) { return host.label->auto_size() && host.label->word_wrap(); })},
      {"Caption", "BackColor", "Font", "Alignment", "ClickColor", "UseDynamicHeight", "LinkColor", "HoverColor",
       "Picture"});
  RecordingHost host;
  kelHyperLabel link(host);
  link.ReadProperties(MemoryBag());
  MemoryBag bag;
  link.WriteProperties(bag);
  EXPECT_EQ(bag.written, Log{"LinkColor"}) << "the one default that differs in writing";
  link.LinkColor(0x008000);
  MemoryBag green;
  link.WriteProperties(green);
  EXPECT_EQ(green.written, Log());
}

TEST(Properties, OfTheBrowseButton) {
  using T = kelBrowseButton;
  const Log drawn = {"glyph 83,25", "edge 81,0,98,38 5 15", "box 83,2,95,35", "changed BackColor"};
  check<T>(
      {PROPERTY(T, Enabled, true, false, {"changed Enabled"},
                [](RecordingHost& host, PropertyValue) { return !host.edit->enabled(); }),
       PROPERTY(T, BorderApperance, one, std::int16_t{0}, {"changed BorderApperance", "border 0"},
                [](RecordingHost& host, PropertyValue) { return host.border_style() == 0; }),
       PROPERTY(T, BackColor, system_color::window_background, Color{7}, drawn,
                [](RecordingHost& host, PropertyValue v) { return host.edit->back_color() == std::get<Color>(v); }),
       PROPERTY(
           T, Text, String(), String(u"x"), {"changed Text"},
           [](RecordingHost& host, PropertyValue v) { return host.edit->text() == std::get<String>(v); }, String(u"0")),
       PROPERTY(T, Font, tornby::Font(), other_font, {"changed Font"}, nullptr, ambient),
       PROPERTY(T, Locked, false, true, {"changed Locked"}), PROPERTY(T, MaxLength, 0, 3, {"changed MaxLength"}),
       PROPERTY(T, ReadOnly, false, true, {"changed ReadOnly"}), PROPERTY(T, Style, 0, 1, {"changed Style"})},
      {"Enabled", "Font", "BorderApperance", "BackColor", "Text", "Locked", "MaxLength", "ReadOnly", "Style"});
}

}  // namespace
}  // namespace tornby
