#include "console_line.h"

#include <fstream>
#include <locale>

#include "log_text.h"

namespace ovra {
namespace log {

namespace {

constexpr char kErrorFormat[] = "[%d-%m-%Y %H-%M-%S] Error: ";
constexpr char kWarningFormat[] = "[%d-%m-%Y %H-%M-%S] Warning: ";

/// A file buffer keeps what it failed to convert and refuses everything after it: it must be asked ahead.
/// Other buffers hold wide text, or recover by themselves.
bool canExpress(std::wostream& stream, const std::wstring& line) {
  using Conversion = std::codecvt<wchar_t, char, std::mbstate_t>;
  const auto* file = dynamic_cast<const std::wfilebuf*>(stream.rdbuf());
  if (!file || line.empty()) return true;
  const auto locale = file->getloc();
  const auto& conversion = std::use_facet<Conversion>(locale);
  std::string bytes(line.size() * static_cast<std::size_t>(conversion.max_length()), '\0');
  std::mbstate_t state{};
  const wchar_t* read = nullptr;
  char* written = nullptr;
  return conversion.out(state, line.data(), line.data() + line.size(), read, &bytes[0],
                        &bytes[0] + bytes.size(), written) == Conversion::ok;
}

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
