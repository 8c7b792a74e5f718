#include "store/RegistryStatusText.h"

namespace nv {

std::string RegistryStatusText(RegStatus status) {
  std::string text = "error " + std::to_string(status);
  switch (status) {
    case RegError::FileNotFound:
      return text + ": not found";
    case RegError::AccessDenied:
      return text + ": access denied (a read-only registry or key)";
    case RegError::InvalidParameter:
      return text + ": a name or a value the registry cannot hold";
    case RegError::Busy:
      return text + ": the registry is busy: another process held its write lock past the 10-second wait";
    case RegError::BadDatabase:
      return text + ": the registry is damaged";
    case RegError::IoFailed:
      return text + ": the registry could not be read or written (disk full, or an I/O error)";
    case RegError::KeyDeleted:
      return text + ": the key was deleted meanwhile";
    default:
      return text;
  }
}

}  // namespace nv
