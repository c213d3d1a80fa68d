// A printer for as long as a test needs one.
#pragma once

namespace tornby::testing {

/// Installs a PostScript printer and makes it the default; destroying it takes it away again.
class TestPrinter {
 public:
  TestPrinter() : installed_(add()) {}
  ~TestPrinter() { remove(); }
  TestPrinter(const TestPrinter&) = delete;
  TestPrinter& operator=(const TestPrinter&) = delete;

  bool installed() const { return installed_; }

  /// Adds one that stays.
  static bool add();
  /// Takes away one that an earlier run left behind.
  static void remove();

 private:
  bool installed_;
};

}  // namespace tornby::testing
