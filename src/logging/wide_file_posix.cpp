#include "wide_file.h"

namespace ovra {
namespace log {

bool isWideFile(std::FILE*) { return false; }

}  // namespace log
}  // namespace ovra
