#include "controls/kelHyperLabel.h"

#include <gtest/gtest.h>

#include "controls/recording_host.h"

namespace tornby {
namespace {

using testing::FixedPicture;
using testing::Log;
using testing::RecordingHost;

constexpr Color link = 0xD54600;
constexpr Color hover = system_color::button_shadow;

PicturePointer picture_of(std::int32_t width, std::int32_t height) {
  return std::make_shared<FixedPicture>(width, height);
}

struct LinkOnHost {
  RecordingHost host;
  kelHyperLabel control{host};

  LinkOnHost() {
    control.InitProperties();
    control.Caption(u"See");
    control.InfoClick = [this] { host.note("InfoClick"); };
    control.MouseUp = [this](std::int16_t& button) { host.note("MouseUp " + std::to_string(button)); };
    control.Click = [this] { host.note("Click"); };
    host.take();
  }
  void move(double x, double y, std::int16_t held = 0) { control.mouse_move(Part::surface, held, {x, y}); }
};

TEST(kelHyperLabel, PlaceholderCaptionTurnsIntoTheControlsName) {
  const std::pair<StringView, StringView> cases[] = {{u"HyperLabel", u"Link7"},
                                                     {u"HyperLabel12", u"Link7"},
                                                     {u"hyperLabel", u"hyperLabel"},
                                                     {u"HyperLabe", u"HyperLabe"}};
  for (const auto& [written, read] : cases) {
    LinkOnHost label;
    label.control.Caption(written);
    EXPECT_EQ(label.host.label->caption(), written);
    EXPECT_EQ(label.control.Caption(), read);
    EXPECT_EQ(label.host.label->caption(), read);
  }
}

TEST(kelHyperLabel, TextModeTakesTheHeightOfTheCaption) {
  LinkOnHost label;
  EXPECT_EQ(label.host.surface().height(), 13 * 12);
  EXPECT_EQ(label.host.label->width(), 100);
  label.control.Caption(std::u16string(40, u'x'));
  EXPECT_EQ(label.host.surface().height(), 13 * 12);
  label.control.UseDynamicHeight(true);
  EXPECT_EQ(label.host.label->height(), 39);
  EXPECT_EQ(label.host.surface().height(), 39 * 12);
  label.host.surface().width(60 * 15);
  label.control.resize();
  EXPECT_EQ(label.host.surface().height(), 4 * 13 * 12);
  EXPECT_TRUE(label.host.label->visible());
  EXPECT_FALSE(label.host.picture->visible());
}

TEST(kelHyperLabel, PictureModePlacesThePictureByAlignment) {
  // 1270 x 640 HIMETRIC are 720 x 362.8 twips, the width 48 pixels.
  const std::pair<std::int16_t, double> cases[] = {{0, 0}, {1, 52}, {2, 26}, {3, 77}};
  for (const auto& [alignment, left] : cases) {
    LinkOnHost label;
    label.host.picture->left(77);
    label.host.picture->top(5);
    label.host.label->alignment(alignment);
    label.control.Picture(picture_of(1270, 640));
    EXPECT_EQ(label.host.picture->left(), left);
    EXPECT_EQ(label.host.picture->top(), 5);
    EXPECT_EQ(label.host.surface().height(), 362);
    EXPECT_TRUE(label.host.picture->visible());
    EXPECT_FALSE(label.host.label->visible());
    label.control.Picture(nullptr);
    EXPECT_FALSE(label.host.picture->visible());
    EXPECT_TRUE(label.host.label->visible());
  }
}

TEST(kelHyperLabel, HoverCapturesAndColoursUntilThePointerLeaves) {
  // The caption is 13 pixels high: 156 twips, which is as far to the right as 10.4 pixels.
  const std::pair<Pointer, bool> cases[] = {{{0, 0}, true},   {{10, 13}, true}, {{10.5, 5}, false}, {{5, 13.1}, false},
                                            {{-1, 5}, false}, {{5, -1}, false}, {{50, 5}, false}};
  for (const auto& [at, stays] : cases) {
    LinkOnHost label;
    label.move(5, 5);
    EXPECT_EQ(label.host.take(), (Log{"capture", "hand"}));
    EXPECT_EQ(label.host.label->fore_color(), hover);
    EXPECT_EQ(label.host.surface().tag(), u"1");
    EXPECT_EQ(label.host.label->tag(), u"13977088");
    label.move(at.x, at.y);
    EXPECT_EQ(label.host.take(), stays ? Log() : Log{"release"}) << at.x << ' ' << at.y;
    EXPECT_EQ(label.host.label->fore_color(), stays ? hover : link);
    EXPECT_EQ(label.host.surface().tag(), stays ? u"1" : u"");
  }
}

TEST(kelHyperLabel, HoverRestoresASystemColour) {
  LinkOnHost label;
  label.control.LinkColor(system_color::button_text);
  label.move(1, 1);
  EXPECT_EQ(label.host.label->tag(), u"-2147483630");
  label.move(-1, 1);
  EXPECT_EQ(label.control.LinkColor(), system_color::button_text);
}

TEST(kelHyperLabel, PictureHoverIsBoundedByThePictureAndLeavesTheColourAlone) {
  LinkOnHost label;
  label.control.Alignment(1);
  label.control.Picture(picture_of(1270, 635));  // 48 x 24 pixels from 52 on
  label.host.picture->top(4);
  label.host.take();
  label.move(51, 5);
  EXPECT_EQ(label.host.take(), Log());
  label.control.mouse_move(Part::picture, 0, {0, -4});
  EXPECT_EQ(label.host.take(), (Log{"capture", "hand"}));
  EXPECT_EQ(label.host.label->fore_color(), link);
  label.control.mouse_move(Part::picture, 0, {48, 20});
  EXPECT_EQ(label.host.take(), Log());
  label.control.mouse_move(Part::picture, 0, {48, 21});
  EXPECT_EQ(label.host.take(), Log{"release"});
  EXPECT_EQ(label.host.label->fore_color(), link);
}

TEST(kelHyperLabel, ModeMayChangeDuringAHover) {
  LinkOnHost label;
  label.move(1, 1);
  label.control.Picture(picture_of(1270, 635));
  label.move(-1, 1);
  label.control.Picture(nullptr);
  EXPECT_EQ(label.control.LinkColor(), link);
}

TEST(kelHyperLabel, ClickIsAPressAndAReleaseOfTheLeftButton) {
  for (const Part part : {Part::surface, Part::label, Part::picture}) {
    LinkOnHost label;
    label.control.mouse_down(part, mouse_button::left, {});
    EXPECT_EQ(label.host.label->fore_color(), part == Part::picture ? link : Color{255});
    EXPECT_EQ(label.host.take(), Log());
    label.control.mouse_up(part, mouse_button::left, {});
    EXPECT_EQ(label.host.take(), (Log{"Click", "MouseUp 1"}));
    label.control.mouse_up(part, mouse_button::left, {});
    EXPECT_EQ(label.host.take(), Log{"MouseUp 1"});
    label.control.mouse_down(part, mouse_button::right, {});
    label.control.mouse_up(part, mouse_button::right, {});
    EXPECT_EQ(label.host.take(), (Log{"InfoClick", "MouseUp 2"}));
  }
}

TEST(kelHyperLabel, PressReleasedElsewhereIsNoClick) {
  LinkOnHost label;
  label.control.mouse_down(Part::label, mouse_button::left, {});
  label.move(5, 5, mouse_button::left);
  label.move(-1, 5, mouse_button::left);
  label.move(5, 5);
  label.host.take();
  label.control.mouse_up(Part::label, mouse_button::left, {});
  EXPECT_EQ(label.host.take(), Log{"MouseUp 1"});
}

TEST(kelHyperLabel, LostCaptureEndsHoverAndPress) {
  LinkOnHost label;
  label.move(5, 5);
  label.control.mouse_down(Part::label, mouse_button::left, {});
  label.host.take();
  label.control.capture_lost();
  EXPECT_EQ(label.host.label->fore_color(), link);
  label.control.mouse_up(Part::label, mouse_button::left, {});
  EXPECT_EQ(label.host.take(), Log{"MouseUp 1"});
  label.control.capture_lost();
  EXPECT_EQ(label.host.label->fore_color(), link);
  label.move(5, 5);
  EXPECT_EQ(label.host.take(), (Log{"capture", "hand"}));
}

TEST(kelHyperLabel, EnterAndSpaceClick) {
  LinkOnHost label;
  std::int16_t none = 0, alt = key::alt;
  for (std::int16_t code : {key::enter, key::space}) {
    label.control.key_down(Part::surface, code, none);
    EXPECT_EQ(label.host.take(), Log{"Click"});
    label.control.key_down(Part::surface, code, alt);
    EXPECT_EQ(label.host.take(), Log());
  }
}

}  // namespace
}  // namespace tornby
