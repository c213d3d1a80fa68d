// What the form keeps between runs.
#pragma once

#include <tornby/base/text.h>

struct FormState {
  tornby::String path;
  tornby::String checksum;  // the digits last shown for that path; empty for none
  int alignment = 0;        // 0 left, 1 right, 2 centre
  int vertical = 1;         // 0 top, 1 middle, 2 bottom
  int frame = 1;            // 0 none, 1 dotted, 2 lines

  // The window's size, at 96 dots an inch.
  static constexpr int least_width = 240;
  static constexpr int least_height = 180;
  int width = 420;
  int height = 220;
};

/// What the file lacks or holds damaged is as in a new FormState.
FormState load_state(tornby::StringView file);

/// Other groups of the file stay. A failure is not reported.
void save_state(tornby::StringView file, const FormState& state);
