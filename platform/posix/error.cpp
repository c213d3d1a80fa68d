#include "platform/posix/error.h"

#include <cerrno>

namespace tornby::posix {

RuntimeError file_error(int system_error) {
  switch (system_error) {
    case ENOENT:
      return RuntimeError(StandardError::file_not_found);
    case ENOTDIR:
      return RuntimeError(StandardError::path_not_found);
    case EACCES:
    case EPERM:
    case EROFS:
      return RuntimeError(StandardError::permission_denied);
    case ENAMETOOLONG:
      return RuntimeError(StandardError::bad_file_name);
    case ENOSPC:
    case EDQUOT:
      return RuntimeError(StandardError::disk_full);
    case EIO:
      return RuntimeError(StandardError::device_io_error);
    case ENOMEM:
      return RuntimeError(StandardError::out_of_memory);
    default:
      return RuntimeError(StandardError::path_file_access_error);
  }
}

}  // namespace tornby::posix
