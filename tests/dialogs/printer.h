// A printer for as long as a test needs one.
#pragma once

namespace tornby::testing {

/// Installs a PostScript printer and makes it the default; destroying it takes it away again.
class TestPrinter {
 public:
  TestPrinter();
  ~TestPrinter();
  TestPrinter(const TestPrinter&) = delete;
  TestPrinter& operator=(const TestPrinter&) = delete;

  bool installed() const { return installed_; }

  /// Takes away one that an earlier run left behind.
  static void remove();

 private:
  bool installed_ = false;
};

}  // namespace tornby::testing
