#include <stdexcept>

#include "net/tls.h"

namespace host {

std::unique_ptr<ITls> makeTls(const TlsFiles&) { throw std::runtime_error("there is no TLS on Windows"); }

}  // namespace host
