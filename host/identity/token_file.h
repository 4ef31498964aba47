#ifndef MIRN_HOST_IDENTITY_TOKEN_FILE_H
#define MIRN_HOST_IDENTITY_TOKEN_FILE_H

#include <chrono>
#include <functional>
#include <string>

namespace host {

/// Where the token is kept unless told otherwise: below the user's folder for what programs leave there; one
/// source a system. Paths are UTF-8. Raises `std::runtime_error` when the user has no such folder.
std::string defaultTokenFile();

/// That place in words for a user, such as "mirn/token in $XDG_STATE_HOME".
std::string defaultTokenFileText();

/// How long a start waits, at most, for another one that is just making the file.
constexpr std::chrono::milliseconds kTokenFilePatience{2000};

/// Lets a time pass.
using Pause = std::function<void(std::chrono::milliseconds)>;

/// The token in the file `path`. Without such a file one is made, with a new token and for its owner's eyes
/// only, together with missing directories; of several hosts that start at once, all get the same token.
/// A file that cannot be read or is empty is looked at again after `pause`s of kTokenFilePatience in all:
/// another start may just be making it. A file that is there is never written.
///
/// Raises `std::runtime_error` on a file that cannot be read or made, that others may read, or that holds no
/// token at all.
std::string loadOrCreateToken(const std::string& path, const Pause& pause);

/// The pause in which the thread sleeps.
void sleepFor(std::chrono::milliseconds time);

}  // namespace host

#endif
