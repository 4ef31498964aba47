#ifndef MIRN_HOST_ANSWERS_CONTENT_CODING_H
#define MIRN_HOST_ANSWERS_CONTENT_CODING_H

#include <optional>
#include <string>
#include <string_view>

namespace host {

/// In which form the bytes of an answer go out.
enum class ContentCoding {
  kPlain,
  kGzipLarge,  ///< Packed where that pays, from `kGzipFrom` bytes on.
  kGzipAll,    ///< Packed whatever the size: the client takes nothing else.
};

constexpr std::size_t kGzipFrom = 1024;

/// The one that suits an Accept-Encoding (RFC 9110, 12.5.3) best; packed ahead of plain where the client
/// likes both alike or tells nothing of plain. Nothing where neither is taken. A field that is missing, or
/// cannot be understood, takes plain bytes.
std::optional<ContentCoding> codingFor(const std::optional<std::string>& acceptEncoding);

/// `bytes` packed as gzip (RFC 1952), the same for the same bytes.
std::string gzip(std::string_view bytes);

}  // namespace host

#endif
