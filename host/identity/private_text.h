#ifndef MIRN_HOST_IDENTITY_PRIVATE_TEXT_H
#define MIRN_HOST_IDENTITY_PRIVATE_TEXT_H

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

namespace host {

/// A file of which nothing is had now, and perhaps in a moment, when whoever makes or holds it is done.
class UnreadableFile : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The content of a file that its owner alone may reach; nothing when there is none. Raises `UnreadableFile`
/// on one that cannot be read, `std::runtime_error` with the reason on one that is no regular file, is larger
/// than a mebibyte, or that others may read or write.
std::optional<std::string> readPrivateText(const std::filesystem::path& path);

/// Makes the directories above a file that are missing, for their owner alone. Raises `std::runtime_error`
/// with the system's reason.
void makeFolderOf(const std::filesystem::path& file);

}  // namespace host

#endif
