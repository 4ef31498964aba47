#include <fcntl.h>
#include <io.h>

#include "wide_file.h"

namespace ovra {
namespace log {

/// The mode of a file can only be asked by setting one; the file is locked meanwhile.
bool isWideFile(std::FILE* file) {
  const int descriptor = ::_fileno(file);
  if (descriptor < 0) return false;  // a service has no console
  ::_lock_file(file);
  const int mode = ::_setmode(descriptor, _O_TEXT);
  if (mode != -1) ::_setmode(descriptor, mode);
  ::_unlock_file(file);
  return mode != -1 && mode != _O_TEXT;
}

}  // namespace log
}  // namespace ovra
