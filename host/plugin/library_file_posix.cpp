#include "plugin/library_choice.h"

namespace host {

std::string libraryFileName() { return "libVEXL2.so"; }

std::filesystem::path librariesFolder() {
  return std::filesystem::u8path(MIRN_LIBRARY_FOLDER) / "mirn" / "vexl2";
}

}  // namespace host
