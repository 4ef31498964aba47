#include "plugin/library_choice.h"

namespace host {

std::string libraryFileName() { return "VEXL2.dll"; }

}  // namespace host
