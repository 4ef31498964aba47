#include <stdexcept>

#include "notifications/post_stream.h"
#include "notifications/webhook_url.h"

namespace host {

std::shared_ptr<IPostEncryption> makePostEncryption(const std::string&) {
  throw std::runtime_error(kWhyNoHttps);
}

}  // namespace host
