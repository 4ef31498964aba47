#ifndef MIRN_VALIDATOR_REQUEST_ERROR_H
#define MIRN_VALIDATOR_REQUEST_ERROR_H

#include <stdexcept>

#include "service_exceptions.h"

namespace ovra {
namespace request_validator {

/// A request that broke the rules of its route: the report of all of them, in UTF-8,
/// under "INVALID_PARAMETER".
class RequestError : public std::runtime_error, public ovra::common::IErrorIdException {
 public:
  using std::runtime_error::runtime_error;

  const char* getErrorId() const override { return kErrorInvalidParameter; }
  const char* getMessage() const override { return what(); }
};

}  // namespace request_validator
}  // namespace ovra

#endif
