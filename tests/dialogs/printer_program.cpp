// Adds the test printer to a prefix, or takes it away. Usage: printer_program add|remove
#include <string_view>

#include "printer.h"

int main(int argc, char** argv) {
  const std::string_view what = argc == 2 ? argv[1] : "";
  tornby::testing::TestPrinter::remove();
  if (what == "remove") return 0;
  return what == "add" && tornby::testing::TestPrinter::add() ? 0 : 1;
}
