#ifndef MIRN_BASE_NARROW_PATH_H
#define MIRN_BASE_NARROW_PATH_H

#include <filesystem>
#include <string>

/// The path that a text of the environment or the command line names, as `getenv` and `main` get it: its
/// bytes, or on Windows the process's code page, which the standard library takes for UTF-8. One source a
/// system.
std::filesystem::path narrowPath(const std::string& text);

#endif
