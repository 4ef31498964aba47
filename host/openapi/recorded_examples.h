#ifndef MIRN_HOST_OPENAPI_RECORDED_EXAMPLES_H
#define MIRN_HOST_OPENAPI_RECORDED_EXAMPLES_H

#include <string_view>

namespace host {

/// Requests and answers of the running product as JSON, by operation: what is in `examples.json`.
std::string_view recordedExamples();

}  // namespace host

#endif
