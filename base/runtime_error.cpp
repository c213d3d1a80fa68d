#include "base/runtime_error.h"

#include <utility>

namespace tornby {

StringView standard_description(StandardError error) {
  switch (error) {
    case StandardError::invalid_procedure_call:
      return u"Invalid procedure call or argument";
    case StandardError::overflow:
      return u"Overflow";
    case StandardError::out_of_memory:
      return u"Out of memory";
    case StandardError::subscript_out_of_range:
      return u"Subscript out of range";
    case StandardError::division_by_zero:
      return u"Division by zero";
    case StandardError::type_mismatch:
      return u"Type mismatch";
    case StandardError::bad_file_name:
      return u"Bad file name or number";
    case StandardError::file_not_found:
      return u"File not found";
    case StandardError::device_io_error:
      return u"Device I/O error";
    case StandardError::disk_full:
      return u"Disk full";
    case StandardError::permission_denied:
      return u"Permission denied";
    case StandardError::path_file_access_error:
      return u"Path/File access error";
    case StandardError::path_not_found:
      return u"Path not found";
    case StandardError::object_variable_not_set:
      return u"Object variable or With block variable not set";
    case StandardError::invalid_use_of_null:
      return u"Invalid use of Null";
    case StandardError::automation_error:
      return u"Automation error";
    case StandardError::duplicate_key:
      return u"This key is already associated with an element of this collection";
  }
  return u"Application-defined or object-defined error";
}

RuntimeError::RuntimeError(StandardError error)
    : RuntimeError(static_cast<std::int32_t>(error), String(standard_description(error))) {}

RuntimeError::RuntimeError(std::int32_t number, String description)
    : number_(number), description_(std::move(description)), what_("run-time error " + std::to_string(number) + ": ") {
  for (const char16_t unit : description_) what_ += unit < 0x80 ? static_cast<char>(unit) : '?';
}

}  // namespace tornby
