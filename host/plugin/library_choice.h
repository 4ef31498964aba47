#ifndef MIRN_HOST_PLUGIN_LIBRARY_CHOICE_H
#define MIRN_HOST_PLUGIN_LIBRARY_CHOICE_H

#include <filesystem>
#include <optional>
#include <string>

#include "plugin/module_loader.h"

namespace host {

/// The storage library that a user chose for the module: by a name, for which the installation has a folder,
/// or by the path of its file.
struct LibraryChoice {
  std::string name;            ///< Of the folder; of a file, the file's own.
  std::filesystem::path file;  ///< Absolute.
};

/// What `text`, in UTF-8, means: a path where it has a separator, otherwise a name. Raises
/// `std::runtime_error` on a name that can be none of a folder.
LibraryChoice libraryChoice(const std::string& text);

/// The file name of a storage library; one source a system.
std::string libraryFileName();

/// Where the installation has a folder for each library; one source a system.
std::filesystem::path librariesFolder();

/// The library that `module` calls; nothing when it calls none.
std::optional<LibraryChoice> libraryOf(const LoadedModule& module);

/// Raises `std::runtime_error` when the library that the module calls is not the chosen one: the loader took
/// another one of that name.
void requireChosen(const LibraryChoice& chosen, const std::optional<LibraryChoice>& called);

}  // namespace host

#endif
