#include "service_exceptions.h"

namespace ovra {
namespace common {

HttpClientErrorException::HttpClientErrorException(std::int32_t httpStatus, const std::string& message)
    : std::runtime_error(message), status(httpStatus) {}

}  // namespace common
}  // namespace ovra

ListenerException::ListenerException(const std::string& errorId, const std::string& message)
    : std::logic_error(message), m_errorId(errorId) {}

const char* ListenerException::getErrorId() const { return m_errorId.c_str(); }

const char* ListenerException::getMessage() const { return what(); }
