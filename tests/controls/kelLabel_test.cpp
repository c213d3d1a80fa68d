#include "controls/kelLabel.h"

#include <gtest/gtest.h>

#include "controls/recording_host.h"

namespace tornby {
namespace {

using testing::Log;
using testing::RecordingElement;
using testing::RecordingHost;

struct LabelOnHost {
  RecordingHost host;
  kelLabel control{host};

  LabelOnHost() {
    control.InitProperties();
    control.InfoClick = [this] { host.note("InfoClick"); };
    control.MouseUp = [this](std::int16_t& button) { host.note("MouseUp " + std::to_string(button)); };
  }
};

TEST(kelLabel, FitsItselfToItsText) {
  LabelOnHost label;
  RecordingElement inside;
  label.host.contained = {&inside};
  label.control.Caption(u"ten chars.");
  EXPECT_EQ(label.host.surface().width(), 60 * 15);
  EXPECT_EQ(label.host.surface().height(), 13 * 12);
  EXPECT_EQ(label.host.label->left(), 0);
  EXPECT_EQ(label.host.label->top(), 0);
  EXPECT_EQ(inside.place, (Rectangle{0, 0, 60 * 15, 13 * 12}));
}

TEST(kelLabel, FitsTheTextToItself) {
  struct Case {
    std::int32_t vertical;
    bool wrap;
    double top, height;
  };
  // 30 characters of 6 pixels take two lines of 94 pixels.
  const Case cases[] = {{0, false, 1, 40},  {0, true, 1, 40},  {1, false, 13.5, 13}, {1, true, 7, 26},
                        {2, false, 27, 13}, {2, true, 14, 26}, {3, false, 33, 13}};
  for (const Case& c : cases) {
    LabelOnHost label;
    label.control.Font({.size = 11});
    label.control.AutoSize(false);
    label.control.WordWrap(c.wrap);
    label.host.label->caption(std::u16string(30, u'x'));
    label.host.surface().width(1500);
    label.host.surface().height(480);
    label.host.label->top(33);
    label.control.VerticalAlignment(c.vertical);
    const std::string which = std::to_string(c.vertical) + (c.wrap ? " wrapped" : "");
    EXPECT_EQ(label.host.label->top(), c.top) << which;
    EXPECT_EQ(label.host.label->height(), c.height) << which;
    EXPECT_EQ(label.host.label->width(), 94) << which;
    EXPECT_EQ(label.host.label->left(), 2) << which;
    EXPECT_FALSE(label.control.AutoSize()) << which;
    EXPECT_EQ(label.host.surface().font(), Font{.size = 11}) << which;
  }
}

TEST(kelLabel, BorderLinesTakeThePlaceOfTheFrame) {
  LabelOnHost label;
  label.control.UseBorderLines(true);
  label.host.take();
  label.control.Refresh();
  label.control.DisplayRubberBand(true);
  label.control.BackColor(1);
  EXPECT_EQ(label.host.take(), (Log{"changed DisplayRubberBand", "changed BackColor"}));
  label.control.UseBorderLines(false);
  EXPECT_EQ(label.host.take(), (Log{"changed UseBorderLines", "border 0"}));
}

TEST(kelLabel, StretchesContainedElementsUnlessToldNotTo) {
  LabelOnHost label;
  RecordingElement inside;
  label.host.contained = {&inside};
  label.control.OverrideAutoAlign(true);
  label.control.AutoSize(false);
  EXPECT_EQ(inside.place, (Rectangle{-1, -1, -1, -1}));
  label.control.OverrideAutoAlign(false);
  EXPECT_EQ(inside.place, (Rectangle{-1, -1, -1, -1}));
  label.control.Refresh();
  EXPECT_EQ(inside.place, (Rectangle{0, 0, 1500, 480}));
}

TEST(kelLabel, LayoutPassesSettingsOnToTheText) {
  LabelOnHost label;
  label.control.Alignment(2);
  label.control.WordWrap(true);
  EXPECT_EQ(label.host.label->alignment(), 0) << "no text moves before the layout";
  EXPECT_FALSE(label.host.label->word_wrap());
  label.control.Enabled(false);
  EXPECT_FALSE(label.host.label->enabled());
  EXPECT_EQ(label.host.label->alignment(), 2);
  EXPECT_TRUE(label.host.label->word_wrap());
}

TEST(kelLabel, RaisesTheSameEventsOnTheTextAndBesideIt) {
  for (const Part part : {Part::surface, Part::label}) {
    LabelOnHost label;
    label.control.mouse_down(part, mouse_button::left, {});
    EXPECT_EQ(label.host.take(), Log());
    label.control.mouse_up(part, mouse_button::left, {});
    EXPECT_EQ(label.host.take(), Log{"MouseUp 1"});
    label.control.mouse_down(part, mouse_button::right, {});
    EXPECT_EQ(label.host.take(), Log{"InfoClick"});
    label.control.mouse_up(part, mouse_button::right, {});
    EXPECT_EQ(label.host.take(), Log{"MouseUp 2"});
  }
}

}  // namespace
}  // namespace tornby
