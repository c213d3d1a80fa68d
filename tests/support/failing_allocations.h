// Memory that runs out at a chosen moment. A test program that uses this links `failing_allocations`.
#pragma once

#include <gtest/gtest.h>

#include <new>
#include <utility>

namespace tornby::testing {

/// The failure of one allocation by operator new, in the thread that runs `during`.
class AllocationFailure {
 public:
  /// Allocation `number`, from 1, fails; with `lasting` all later ones too, as when memory has run out for good.
  AllocationFailure(unsigned number, bool lasting) : left_(number), lasting_(lasting) {}

  /// Runs the action, whose allocations are counted, and returns its result. Expectations belong outside.
  template <class Action>
  decltype(auto) during(Action&& action) {
    const Armed armed(this);
    return std::forward<Action>(action)();
  }

  bool happened() const { return happened_; }

  /// Whether the allocation being made is to fail. For operator new.
  static bool strikes();

 private:
  class Armed {
   public:
    explicit Armed(AllocationFailure* failure);
    ~Armed();
  };

  unsigned left_;
  bool lasting_;
  bool happened_ = false;
};

/// Runs `attempt(failure)` with the first allocation failing, with the second, and so on, until none fails any more:
/// that last run must succeed. First each fails alone, then with all after it. Returns how many runs met a failure.
/// `attempt` makes everything anew, acts in `failure.during`, and then checks what came of it.
template <class Attempt>
unsigned fail_each_allocation(Attempt attempt) {
  unsigned failures = 0;
  for (const bool lasting : {false, true}) {
    for (unsigned number = 1;; ++number) {
      AllocationFailure failure(number, lasting);
      attempt(failure);
      if (!failure.happened()) break;
      ++failures;
    }
  }
  return failures;
}

/// Whatever allocation fails while `ask()` makes an object and asks it, the answer is right or there is none.
template <class Ask>
void expect_no_wrong_answer(Ask ask) {
  const auto right = ask();
  fail_each_allocation([&](AllocationFailure& failure) {
    try {
      EXPECT_EQ(failure.during(ask), right);
    } catch (const std::bad_alloc&) {
      EXPECT_TRUE(failure.happened());
    }
  });
}

}  // namespace tornby::testing
