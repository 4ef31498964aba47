#include "plugin/library_choice.h"
#include "system/process_windows.h"

namespace host {

std::string libraryFileName() { return "VEXL2.dll"; }

/// Beside the host, wherever a user had it installed.
std::filesystem::path librariesFolder() { return programFile().parent_path() / "vexl2"; }

}  // namespace host
