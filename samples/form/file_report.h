// What the form says of a file.
#pragma once

#include <tornby/base/text.h>

struct FileReport {
  tornby::String checksum;  // eight digits, or empty when there is none
  tornby::String link;      // the checksum in words, or why there is none
  tornby::String label;     // the file, and whether it has changed
};

/// `known` is the checksum that the file had before; empty when that is not known.
FileReport report_on(tornby::StringView path, tornby::StringView known);
