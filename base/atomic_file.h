#ifndef MIRN_BASE_ATOMIC_FILE_H
#define MIRN_BASE_ATOMIC_FILE_H

#include <filesystem>
#include <string_view>

/// Files that are there whole or not at all, however a write ends: at every moment the old or the new content
/// stands at the path, also after a kill of the process or a loss of power. One mechanism for every system;
/// safe to be used by several threads and processes at once, of which the last one wins.
///
/// A path may be relative and may be a bare name. A symbolic link is followed, a dangling one, too: the file
/// that it names is replaced or made, and the link stays.
///
/// A temporary file stands beside the target for as long as a write takes (name.HEXDIGITS.new). What a killed
/// process left of them goes away at the next write of that file; those of living writers stay.

/// Who may read a file that was not there before.
enum class Readers {
  kEveryone,  ///< POSIX: mode 644, whatever the mask; Windows: whom the folder hands its access on to
  kOwner      ///< POSIX: mode 600; Windows: an access list of one entry
};

/// Puts `content` in the place of the file at `path`, or makes the file. One that is there keeps its
/// permissions, and its owner and group where the system lets this process give files away; a new one has
/// `ofNewFile`'s.
///
/// When this returns, the new content stands at `path` and is itself on the disk. When it throws, the old
/// file stands there, or none, as before. A failure to synchronise the folder after the new content has taken
/// the name is neither: it is not told, since the new content stands, but a loss of power before the system
/// writes the folder by itself may then bring the old content back, whole.
///
/// @throws std::runtime_error whose what() is the system's reason as UTF-8, without the path
void replaceFile(const std::filesystem::path& path, std::string_view content, Readers ofNewFile);

/// Makes a file with `content` for its owner alone. One that is there already, or appears meanwhile, of
/// whatever kind, stays as it is. True when the file was made; the same holds of the folder as above.
///
/// @throws std::runtime_error whose what() is the system's reason as UTF-8, without the path
bool makePrivateFile(const std::filesystem::path& path, std::string_view content);

#endif
