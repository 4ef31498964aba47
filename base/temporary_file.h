#ifndef MIRN_BASE_TEMPORARY_FILE_H
#define MIRN_BASE_TEMPORARY_FILE_H

#include <cstdint>
#include <filesystem>
#include <string_view>

#include "atomic_file.h"

/// The steps of a write that is whole or not at all. All but `removeUnlessInUse` and `syncFolder` throw
/// std::runtime_error with the system's reason.

/// A new file beside the one that it is to be, held against `removeUnlessInUse` of others for as long as it
/// lives, and gone at the end unless it became that one. One source a system.
class TemporaryFile {
 public:
  /// Empty, with the permissions of the file `target`, or those of `ofNewFile` when there is none: never may
  /// more read it than the file that it becomes.
  TemporaryFile(const std::filesystem::path& target, Readers ofNewFile);
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile();

  /// All of `content`, and on the disk.
  void write(std::string_view content);

  /// Takes the name of `target`, in the place of the file that is there.
  void replace(const std::filesystem::path& target);

  /// Takes the name of `target` unless there is a file; false then.
  bool become(const std::filesystem::path& target);

 private:
  explicit TemporaryFile(const std::filesystem::path& target);

  std::filesystem::path m_path;
  std::intptr_t m_handle;  ///< the system's
  bool m_isGone = false;   ///< nothing is left under m_path
};

/// Removes a temporary file unless a living writer holds it.
void removeUnlessInUse(const std::filesystem::path& temporary);

/// Writes the names in a folder to the disk, as far as the system does such a thing.
void syncFolder(const std::filesystem::path& folder);

#endif
