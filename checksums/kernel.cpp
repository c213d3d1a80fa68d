#include "checksums/kernel.h"

namespace tornby {

Features available_features() {
  return no_features;
}

}  // namespace tornby
