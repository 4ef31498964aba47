#include "host/identity/open_to_others.h"

namespace host {

void openToOthers(const std::filesystem::path& file) {
  std::filesystem::permissions(file, std::filesystem::perms::group_read, std::filesystem::perm_options::add);
}

}  // namespace host
