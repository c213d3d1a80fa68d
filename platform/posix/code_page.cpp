#include "platform/code_page.h"

#include "base/single_byte_code_page.h"

namespace tornby {

const AnsiCodePage& native_code_page() {
  return windows_1252();
}

}  // namespace tornby
