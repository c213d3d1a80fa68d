#include "base/event.h"

#include <gtest/gtest.h>

namespace tornby {
namespace {

TEST(Event, PassesReferencesAndToleratesAHandlerThatReplacesItself) {
  Event<int&> event;
  int figure = 1;
  event.raise(figure);  // nobody listens
  int calls = 0;
  event = [&](int& value) {
    event = nullptr;
    value += 41;
    ++calls;  // the captures are still alive
  };
  event.raise(figure);
  event.raise(figure);
  EXPECT_EQ(figure, 42);
  EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace tornby
