#include "notifications/webhook_url.h"

namespace host {

const char* const kWhyNoHttps = "there is no TLS on Windows";

}  // namespace host
