#ifndef MIRN_LOGGING_WIDE_FILE_H
#define MIRN_LOGGING_WIDE_FILE_H

#include <cstdio>

namespace ovra {
namespace log {

/// Whether the C library writes wide text to `file` as UTF-8 or UTF-16, whatever the locale.
bool isWideFile(std::FILE* file);

}  // namespace log
}  // namespace ovra

#endif
