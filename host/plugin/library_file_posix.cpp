#include "plugin/library_choice.h"

namespace host {

std::string libraryFileName() { return "libVEXL2.so"; }

}  // namespace host
