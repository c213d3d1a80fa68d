#include "controls/kelBrowseButton.h"

#include <gtest/gtest.h>

#include "controls/recording_host.h"

namespace tornby {
namespace {

using testing::Log;
using testing::RecordingHost;

// The client area is 98 x 38 pixels inside its border, the button 17 wide at its right.
const Log normal = {"glyph 83,25", "edge 81,0,98,38 5 15", "box 83,2,95,35"};
const Log pressed = {"glyph 83,25", "edge 81,0,98,38 10 16399", "box 83,2,95,35"};
const Log over = {"glyph 83,25"};
constexpr Pointer inside{90, 10};
constexpr Pointer outside{80, 10};

Log joined(std::initializer_list<Log> pieces) {
  Log all;
  for (const Log& piece : pieces) all.insert(all.end(), piece.begin(), piece.end());
  return all;
}

struct ButtonOnHost {
  RecordingHost host;
  kelBrowseButton control{host};

  ButtonOnHost() {
    control.InitProperties();
    control.resize();
    host.edit->control = &control;
    const auto number = [](std::int16_t value) { return std::string(1, ' ').append(std::to_string(value)); };
    control.KeyDown = [=, this](std::int16_t& code, std::int16_t&) { host.note("KeyDown" + number(code)); };
    control.KeyUp = [=, this](std::int16_t& code, std::int16_t&) { host.note("KeyUp" + number(code)); };
    control.KeyPress = [=, this](std::int16_t& code) { host.note("KeyPress" + number(code)); };
    control.MouseUp = [=, this](std::int16_t& button) { host.note("MouseUp" + number(button)); };
    control.InfoClick = [this] { host.note("InfoClick"); };
    control.ControlClick = [this] { host.note("ControlClick"); };
    control.OpenBrowse = [this] { host.note("OpenBrowse"); };
    control.DblClick = [this] { host.note("DblClick"); };
    control.Click = [this] { host.note("Click"); };
    control.ChangeText = [this](String& text) { host.note("ChangeText " + testing::plain(text)); };
    host.take();
  }
  void down(Pointer at, std::int16_t button = 1) { control.mouse_down(Part::surface, button, at); }
  void move(Pointer at, std::int16_t held = 0) { control.mouse_move(Part::surface, held, at); }
  void up(Pointer at, std::int16_t button = 1) { control.mouse_up(Part::surface, button, at); }
};

TEST(kelBrowseButton, ClickRaisesItsThreeEventsInOrder) {
  ButtonOnHost button;
  button.down(inside);
  EXPECT_EQ(button.host.take(), joined({{"release", "capture"}, pressed}));
  button.up(inside);
  EXPECT_EQ(button.host.take(), joined({pressed, normal, {"release", "ControlClick", "OpenBrowse", "MouseUp 1"}}));
}

TEST(kelBrowseButton, PressDraggedOutsideIsNoClick) {
  ButtonOnHost button;
  button.down(inside);
  button.host.take();
  button.move(outside, 1);
  EXPECT_EQ(button.host.take(), joined({normal, {"release"}}));
  button.up(outside);
  EXPECT_EQ(button.host.take(), joined({{"capture"}, over, {"MouseUp 1"}}));
  button.move(outside);
  EXPECT_EQ(button.host.take(), joined({normal, {"release"}}));

  // A press that comes back is one again.
  button.down(inside);
  button.move(outside, 1);
  button.host.take();
  button.move(inside, 1);
  EXPECT_EQ(button.host.take(), joined({{"capture"}, pressed}));
  button.up(inside);
  EXPECT_EQ(button.host.take(), joined({pressed, normal, {"release", "ControlClick", "OpenBrowse", "MouseUp 1"}}));

  // Released outside without a move before it.
  button.down(inside);
  button.host.take();
  button.up(outside);
  EXPECT_EQ(button.host.take(), joined({normal, {"release", "MouseUp 1"}}));
}

TEST(kelBrowseButton, HoverFollowsThePointer) {
  ButtonOnHost button;
  button.move(inside);
  EXPECT_EQ(button.host.take(), joined({{"capture"}, over}));
  button.move({81, 0});
  EXPECT_EQ(button.host.take(), over);
  button.move({97.6, 10});  // rounds to 98, one beyond
  EXPECT_EQ(button.host.take(), joined({normal, {"release"}}));
}

TEST(kelBrowseButton, OnlyAPressThatBeganInsideShowsAndClicks) {
  ButtonOnHost button;
  button.down(outside);
  EXPECT_EQ(button.host.take(), Log{"release"});
  button.move(inside, 1);
  EXPECT_EQ(button.host.take(), joined({{"capture"}, over}));
  button.up(inside);
  EXPECT_EQ(button.host.take(), joined({over, {"MouseUp 1"}}));

  // A press whose release another window got.
  button.down(inside);
  button.move(inside);
  button.host.take();
  button.up(inside);
  EXPECT_EQ(button.host.take(), joined({over, {"MouseUp 1"}}));
}

TEST(kelBrowseButton, RightButtonInformsEverywhere) {
  ButtonOnHost button;
  button.down(outside, 2);
  EXPECT_EQ(button.host.take(), (Log{"release", "InfoClick"}));
  button.down(inside, 2);
  EXPECT_EQ(button.host.take(), joined({{"release", "capture"}, over, {"InfoClick"}}));
  button.up(inside, 2);
  EXPECT_EQ(button.host.take(), joined({over, {"MouseUp 2"}}));
  button.control.mouse_down(Part::edit, 2, inside);
  button.control.mouse_up(Part::edit, 2, inside);
  EXPECT_EQ(button.host.take(), (Log{"InfoClick", "MouseUp 2"}));
}

TEST(kelBrowseButton, LostCaptureEndsThePress) {
  ButtonOnHost button;
  button.down(inside);
  button.host.take();
  button.control.capture_lost();
  EXPECT_EQ(button.host.take(), normal);
  button.up(inside);
  EXPECT_EQ(button.host.take(), joined({{"capture"}, over, {"MouseUp 1"}}));
}

TEST(kelBrowseButton, KeysRaiseTheirEvents) {
  ButtonOnHost button;
  button.control.Text(u"abc");
  button.host.take();
  std::int16_t none = 0, code = 'x';
  button.control.key_press(Part::edit, code);
  EXPECT_EQ(button.host.take(), Log{"KeyPress 120"});
  code = key::enter;
  button.control.key_press(Part::edit, code);
  EXPECT_EQ(button.host.take(), (Log{"KeyPress 13", "ChangeText abc"}));
  button.control.key_up(Part::edit, code, none);
  EXPECT_EQ(button.host.take(), Log{"KeyUp 13"});
  code = key::del;
  button.control.key_up(Part::edit, code, none);
  EXPECT_EQ(button.host.take(), (Log{"KeyUp 46", "ChangeText abc", "KeyPress 46"}));
  button.control.key_down(Part::surface, code, none);
  EXPECT_EQ(button.host.take(), Log{"KeyDown 46"});
  button.control.key_down(Part::edit, code, none);
  EXPECT_EQ(button.host.take(), Log());
}

TEST(kelBrowseButton, HandlersMayChangeKeys) {
  ButtonOnHost button;
  button.control.KeyPress = [](std::int16_t& code) { code = 0; };
  std::int16_t code = key::enter;
  button.control.key_press(Part::edit, code);
  EXPECT_EQ(code, 0);
  EXPECT_EQ(button.host.take(), Log{"ChangeText "});
}

TEST(kelBrowseButton, F4AndAltDownPressTheButton) {
  ButtonOnHost button;
  struct Case {
    std::int16_t code, shift;
    bool opens;
  };
  const Case cases[] = {{key::f4, 0, true},
                        {key::f4, key::alt, false},
                        {key::down, key::alt, true},
                        {key::down, 0, false},
                        {key::down, key::shift, false}};
  for (Case c : cases) {
    button.control.key_down(Part::edit, c.code, c.shift);
    EXPECT_EQ(button.host.take(), c.opens ? (Log{"ControlClick", "OpenBrowse"}) : Log()) << c.code << ' ' << c.shift;
  }
  button.control.Enabled(false);
  button.host.take();
  button.control.activate();
  EXPECT_EQ(button.host.take(), Log()) << "a disabled button opens for nobody";
}

TEST(kelBrowseButton, TypingKeepsTheStoredText) {
  ButtonOnHost button;
  button.host.edit->text(u"typed");
  EXPECT_EQ(button.host.take(), (Log{"changed Text", "ChangeText typed"}));
  EXPECT_EQ(button.control.Text(), u"typed");
  button.control.Text(u"x");
  EXPECT_EQ(button.host.take(), (Log{"changed Text", "ChangeText x", "changed Text"}));
}

TEST(kelBrowseButton, LastOfLockReadOnlyAndPaintingDecidesAboutTheField) {
  ButtonOnHost button;
  button.control.Locked(true);
  EXPECT_FALSE(button.host.edit->enabled());
  EXPECT_TRUE(button.control.Font().italic);
  button.control.paint();
  EXPECT_TRUE(button.host.edit->enabled());
  button.control.Locked(false);
  EXPECT_FALSE(button.control.Font().italic);
  button.control.ReadOnly(true);
  EXPECT_FALSE(button.host.edit->enabled());
  EXPECT_FALSE(button.control.Font().italic);
  button.control.got_focus();
  EXPECT_TRUE(button.host.edit->enabled());
  button.control.Enabled(false);
  EXPECT_FALSE(button.host.edit->enabled());
  EXPECT_FALSE(button.host.label->enabled());
}

TEST(kelBrowseButton, StyleMovesTheButtonIn) {
  ButtonOnHost button;
  button.control.Style(5);
  button.control.BorderApperance(2);
  EXPECT_EQ(button.host.take(), (Log{"changed Style", "changed BorderApperance"})) << "no border for 2";
  button.control.paint();
  EXPECT_EQ(button.host.take(), (Log{"glyph 83,25", "edge 80,2,97,37 5 15", "box 82,4,94,34"}));
  button.control.Enabled(false);
  button.host.take();
  button.control.paint();
  EXPECT_EQ(button.host.take().front(), "grey 83,25");
}

TEST(kelBrowseButton, LayoutLeavesRoomForTheButton) {
  ButtonOnHost button;
  EXPECT_EQ(button.host.edit->left(), 2);
  EXPECT_EQ(button.host.edit->width(), 98 - 17 - 10);
  EXPECT_EQ(button.host.edit->height(), 15);
  EXPECT_EQ(button.host.edit->top(), 11.5);
  EXPECT_EQ(button.host.label->left(), 2);
  EXPECT_EQ(button.host.label->top(), 11.5);
  EXPECT_EQ(button.host.label->width(), 71);
  EXPECT_EQ(button.host.label->height(), 15);
  EXPECT_FALSE(button.host.label->visible());
  button.host.surface().width(300);
  button.control.resize();
  EXPECT_EQ(button.host.edit->width(), 0);
}

TEST(kelBrowseButton, LosingTheFocusShowsTheField) {
  ButtonOnHost button;
  button.host.label->visible(true);
  button.host.label->caption(u"x");
  button.host.edit->visible(false);
  button.control.lost_focus();
  EXPECT_EQ(button.host.take(), normal);
  EXPECT_FALSE(button.host.label->visible());
  EXPECT_EQ(button.host.label->caption(), u"");
  EXPECT_TRUE(button.host.edit->visible());
}

}  // namespace
}  // namespace tornby
