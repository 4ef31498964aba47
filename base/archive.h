#ifndef MIRN_BASE_ARCHIVE_H
#define MIRN_BASE_ARCHIVE_H

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

/// A packed archive that cannot be read. `what()` goes on behind its name: "is cut off".
class ArchiveError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// What is in a gzip file of one member. Raises an `ArchiveError` for another form, a wrong checksum or
/// length, bytes behind the end, and for more than `most` bytes.
std::string unpackedGzip(std::string_view gzip, std::size_t most);

/// Hands on each plain file of a tar archive: its name, without "./" in front, and its bytes, which lie in
/// `archive`; a long name may stand in a record ahead of it. Raises an `ArchiveError` for what is no such
/// archive and for a wrong checksum.
void forEachFile(std::string_view archive,
                 const std::function<void(const std::string& name, std::string_view bytes)>& take);

#endif
