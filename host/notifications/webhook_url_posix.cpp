#include "notifications/webhook_url.h"

namespace host {

const char* const kWhyNoHttps = "";

}  // namespace host
