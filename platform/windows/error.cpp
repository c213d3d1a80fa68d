#include "platform/windows/error.h"

#include "platform/windows/system.h"

namespace tornby::windows {

RuntimeError file_error(std::uint32_t system_error) {
  switch (system_error) {
    case ERROR_FILE_NOT_FOUND:
      return RuntimeError(StandardError::file_not_found);
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
      return RuntimeError(StandardError::path_not_found);
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
      return RuntimeError(StandardError::permission_denied);
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
      return RuntimeError(StandardError::bad_file_name);
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return RuntimeError(StandardError::disk_full);
    case ERROR_CRC:
    case ERROR_READ_FAULT:
    case ERROR_WRITE_FAULT:
    case ERROR_IO_DEVICE:
      return RuntimeError(StandardError::device_io_error);
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY:
      return RuntimeError(StandardError::out_of_memory);
    default:
      return RuntimeError(StandardError::path_file_access_error);
  }
}

}  // namespace tornby::windows
