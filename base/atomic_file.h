#ifndef MIRN_BASE_ATOMIC_FILE_H
#define MIRN_BASE_ATOMIC_FILE_H

#include <boost/filesystem/path.hpp>
#include <string>

/// Puts `content` in the place of the file at `path`, or makes the file: at every moment the old or the new
/// content stands there whole, also after a loss of power. An existing file keeps its permissions, a new one
/// may be read by everyone. True when the new content is safe on the disk.
bool replaceFile(const boost::filesystem::path& path, const std::string& content);

#endif
