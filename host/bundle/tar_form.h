#ifndef MIRN_HOST_BUNDLE_TAR_FORM_H
#define MIRN_HOST_BUNDLE_TAR_FORM_H

#include <cstdint>
#include <string>

namespace host {

/// The form of an archive of files (POSIX pax): a header ahead of each, padding behind it, an end behind all.

/// Of a plain file that its owner alone may write, of that moment (seconds since 1970). `name` is a path with
/// slashes, of visible ASCII; a long one has a record of its own. Raises `std::length_error` from 8 GiB on.
std::string tarHeader(const std::string& name, std::uint64_t size, std::int64_t seconds);

/// What fills up the last block of a file.
std::string tarPadding(std::uint64_t size);

std::string tarEnd();

}  // namespace host

#endif
