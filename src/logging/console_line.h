#ifndef MIRN_LOGGING_CONSOLE_LINE_H
#define MIRN_LOGGING_CONSOLE_LINE_H

#include <boost/optional.hpp>
#include <ctime>
#include <ostream>
#include <string>

#include "logger.h"

namespace ovra {
namespace log {

/// What stands ahead of a warning's or an error's text. A level that is neither counts as a warning; without
/// a time the prefix is empty.
std::wstring consolePrefix(LogLevel level, const boost::optional<std::tm>& time);

/// Writes `line` with a line end and flushes. Text that the stream cannot take goes out escaped, and the
/// stream stays of use.
void writeConsoleLine(std::wostream& stream, const std::wstring& line);

}  // namespace log
}  // namespace ovra

#endif
