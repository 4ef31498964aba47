#ifndef MIRN_SESSION_MIRN_EXCEPTION_H
#define MIRN_SESSION_MIRN_EXCEPTION_H

#include <stdexcept>
#include <string>

#include "service_exceptions.h"

/// A failure of the session: an error id of service_exceptions.h and a UTF-8 text.
class MirnException : public std::logic_error, public ovra::common::IErrorIdException {
 public:
  MirnException(const std::string& errorId, const std::string& message);

  const char* getErrorId() const override;
  const char* getMessage() const override;

 private:
  std::string m_errorId;
};

#endif
