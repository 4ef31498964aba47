#ifndef MIRN_HOST_NOTIFICATIONS_SIGNATURE_H
#define MIRN_HOST_NOTIFICATIONS_SIGNATURE_H

#include <cstdint>
#include <filesystem>
#include <string>

namespace host {

/// By which a receiver knows that `body` is ours, and of the moment `seconds` (since 1970):
/// "t=SECONDS,v1=HEX", where HEX is the HMAC-SHA256 of "SECONDS.BODY" under `secret`. Raises
/// `std::runtime_error` when the system cannot make it.
std::string signatureOf(const std::string& secret, std::int64_t seconds, const std::string& body);

/// What a file of a secret holds, without the end of its line. Raises `std::runtime_error` with the file and
/// the reason where there is none, others may read it, or it is easy to guess.
std::string secretIn(const std::filesystem::path& file);

/// Of a secret, at least.
constexpr std::size_t kLeastSecretBytes = 16;

}  // namespace host

#endif
