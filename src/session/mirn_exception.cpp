#include "mirn_exception.h"

MirnException::MirnException(const std::string& errorId, const std::string& message)
    : std::logic_error(message), m_errorId(errorId) {}

const char* MirnException::getErrorId() const { return m_errorId.c_str(); }

const char* MirnException::getMessage() const { return what(); }
