#include "console_line.h"

#include "expressible.h"
#include "log_text.h"

namespace ovra {
namespace log {

namespace {

constexpr char kErrorFormat[] = "[%d-%m-%Y %H-%M-%S] Error: ";
constexpr char kWarningFormat[] = "[%d-%m-%Y %H-%M-%S] Warning: ";

}  // namespace

std::wstring consolePrefix(LogLevel level, const boost::optional<std::tm>& time) {
  if (!time) return {};
  char narrow[50] = {};
  std::strftime(narrow, sizeof narrow, level == LogLevel::kError ? kErrorFormat : kWarningFormat, &*time);
  const std::string prefix(narrow);
  return {prefix.begin(), prefix.end()};
}

void writeConsoleLine(std::wostream& stream, const std::wstring& line) {
  stream.clear();
  if (canExpress(stream, line)) {
    stream << line << std::endl;
    if (stream) return;
    stream.clear();
  }
  stream << escapeText(line) << std::endl;
}

}  // namespace log
}  // namespace ovra
