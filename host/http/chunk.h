#ifndef MIRN_HOST_HTTP_CHUNK_H
#define MIRN_HOST_HTTP_CHUNK_H

#include <string>

namespace host {

/// `bytes` as a chunk of a body; nothing of none, since an empty chunk would end the body.
std::string chunkOf(const std::string& bytes);

/// Ends a body of chunks, without trailers.
constexpr char kLastChunk[] = "0\r\n\r\n";

}  // namespace host

#endif
