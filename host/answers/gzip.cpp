#include "answers/content_coding.h"
#include "answers/gzip_stream.h"

namespace host {

std::string gzip(std::string_view bytes) {
  GzipStream stream;
  stream.add(bytes);
  stream.finish();
  std::string packed = stream.take();
  packed.shrink_to_fit();
  return packed;
}

}  // namespace host
