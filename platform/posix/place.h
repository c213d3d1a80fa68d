// Where a file stands, and names beside it.
#pragma once

#include <string>

#include "platform/posix/descriptor.h"

namespace tornby::posix {

struct Place {
  Descriptor folder;
  std::string name;  // in the folder
};

/// The place that the name leads to, through symbolic links; there need not be a file.
Place place_of(std::string name);

/// The place's name with `ending` and, from 2 on, the number added; its own end is cut off where the whole would be too
/// long for the folder.
std::string name_beside(const Place& place, const char* ending, int number);

}  // namespace tornby::posix
