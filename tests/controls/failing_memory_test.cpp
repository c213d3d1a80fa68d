// Memory that runs out inside a member: the control stays whole, and the same call works afterwards.
#include <gtest/gtest.h>

#include <new>

#include "controls/kelBrowseButton.h"
#include "controls/kelHyperLabel.h"
#include "controls/kelLabel.h"
#include "controls/recording_host.h"
#include "support/failing_allocations.h"

namespace tornby {
namespace {

using testing::MemoryBag;
using testing::RecordingHost;

const Font long_font{.name = u"A font's name that needs memory of its own", .size = 11};
const StringView long_text = u"A text that needs memory of its own as well, and not a little";

template <class C>
using Action = void (*)(C&);

/// Lets every allocation of every action fail. After the action has then been called again, with memory, nothing tells
/// that it ever failed.
template <class C, std::size_t count>
void expect_survival(const Action<C> (&actions)[count]) {
  const auto state_of = [](const C& control) {
    MemoryBag bag;
    control.WriteProperties(bag);
    return bag.values;
  };
  for (const Action<C>& action : actions) {
    RecordingHost undisturbed_host;
    C undisturbed(undisturbed_host);
    undisturbed.InitProperties();
    action(undisturbed);
    testing::fail_each_allocation([&](testing::AllocationFailure& failure) {
      RecordingHost host;
      C control(host);
      control.InitProperties();
      if constexpr (std::is_same_v<C, kelBrowseButton>) host.edit->control = &control;
      bool failed = false;
      failure.during([&] {
        try {
          action(control);
        } catch (const std::bad_alloc&) {
          failed = true;
        }
      });
      if (failed) action(control);
      EXPECT_TRUE(state_of(control) == state_of(undisturbed)) << &action - actions;
    });
  }
  testing::fail_each_allocation([](testing::AllocationFailure& failure) {
    failure.during([] {
      try {
        RecordingHost host;
        C control(host);
        control.InitProperties();
        control.ReadProperties(MemoryBag());
      } catch (const std::bad_alloc&) {
      }
    });
  });
}

TEST(FailingMemory, LeavesALabelWhole) {
  const Action<kelLabel> actions[] = {
      [](kelLabel& c) { c.Caption(long_text); },
      [](kelLabel& c) { c.Font(long_font); },
      [](kelLabel& c) { c.AutoSize(false); },
      [](kelLabel& c) { c.UseBorderLines(true); },
  };
  expect_survival(actions);
}

TEST(FailingMemory, LeavesALinkWhole) {
  const Action<kelHyperLabel> actions[] = {
      [](kelHyperLabel& c) { c.Caption(long_text); },
      [](kelHyperLabel& c) { c.Font(long_font); },
      [](kelHyperLabel& c) { c.UseDynamicHeight(true); },
      [](kelHyperLabel& c) { c.Picture(std::make_shared<testing::FixedPicture>(100, 100)), c.Picture(nullptr); },
      [](kelHyperLabel& c) {  // the colour from before the hover is kept in a text
        c.mouse_move(Part::label, 0, {1, 1});
        c.mouse_move(Part::label, 0, {-1, 1});
      },
  };
  expect_survival(actions);
}

TEST(FailingMemory, LeavesABrowseButtonWhole) {
  const Action<kelBrowseButton> actions[] = {
      [](kelBrowseButton& c) { c.Text(long_text); },
      [](kelBrowseButton& c) { c.Font(long_font); },
      [](kelBrowseButton& c) { c.Locked(true); },
      [](kelBrowseButton& c) { c.Enabled(false), c.paint(); },
      [](kelBrowseButton& c) {
        c.mouse_down(Part::surface, mouse_button::left, {90, 10});
        c.mouse_up(Part::surface, mouse_button::left, {90, 10});
      },
  };
  expect_survival(actions);
}

}  // namespace
}  // namespace tornby
