// Errors that reach the caller: a number and a description.
#pragma once

#include <cstdint>
#include <exception>
#include <string>

#include <tornby/base/text.h>

namespace tornby {

/// The standard run-time errors that this library raises, under their usual numbers.
enum class StandardError : std::int32_t {
  invalid_procedure_call = 5,
  overflow = 6,
  out_of_memory = 7,
  subscript_out_of_range = 9,
  division_by_zero = 11,
  type_mismatch = 13,
  bad_file_name = 52,
  file_not_found = 53,
  device_io_error = 57,
  disk_full = 61,
  permission_denied = 70,
  path_file_access_error = 75,
  path_not_found = 76,
  object_variable_not_set = 91,
  invalid_use_of_null = 94,
  automation_error = 440,
  duplicate_key = 457,
};

/// The usual text of a standard run-time error, such as "Subscript out of range" for 9.
StringView standard_description(StandardError error);

/// Errors that a class defines itself carry this base plus an offset of their own.
inline constexpr std::int32_t object_error_base = -2147221504;  // 0x80040000

/// An error raised to the caller. Standard errors carry small positive numbers, class-defined ones
/// `object_error_base` plus an offset.
class RuntimeError : public std::exception {
 public:
  explicit RuntimeError(StandardError error);
  RuntimeError(std::int32_t number, String description);

  std::int32_t number() const noexcept { return number_; }
  const String& description() const noexcept { return description_; }

  /// The number and the description in ASCII, for a debugger or a test's output.
  const char* what() const noexcept override { return what_.c_str(); }

 private:
  std::int32_t number_;
  String description_;
  std::string what_;
};

}  // namespace tornby
