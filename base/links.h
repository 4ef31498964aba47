#ifndef MIRN_BASE_LINKS_H
#define MIRN_BASE_LINKS_H

#include <filesystem>

/// The file that `path` names in the end: where symbolic links of its last name lead, the place of a missing
/// file, too. `path` itself when it is no link. Relative paths stay relative. One source a system.
///
/// @throws std::runtime_error with the system's reason on a link that cannot be read, or on a ring of links
std::filesystem::path behindLinks(const std::filesystem::path& path);

#endif
