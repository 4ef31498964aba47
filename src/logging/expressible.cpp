#include "expressible.h"

#include <algorithm>
#include <climits>
#include <cwchar>
#include <ext/stdio_sync_filebuf.h>
#include <fstream>
#include <locale>

#include "wide_file.h"

namespace ovra {
namespace log {

namespace {

using Conversion = std::codecvt<wchar_t, char, std::mbstate_t>;
using SynchronisedBuffer = __gnu_cxx::stdio_sync_filebuf<wchar_t>;

// Both ask for the way back, too: some conversions replace what they lack by what looks like it.

bool convertsBothWays(const Conversion& conversion, const std::wstring& line) {
  std::string bytes(line.size() * static_cast<std::size_t>(conversion.max_length()), '\0');
  std::mbstate_t state{};
  const wchar_t* read = nullptr;
  char* written = nullptr;
  if (conversion.out(state, line.data(), line.data() + line.size(), read, &bytes[0], &bytes[0] + bytes.size(),
                     written) != Conversion::ok) {
    return false;
  }
  std::wstring back(line.size(), L'\0');
  state = {};
  const char* readBack = nullptr;
  wchar_t* end = nullptr;
  return conversion.in(state, bytes.data(), written, readBack, &back[0], &back[0] + back.size(), end) ==
             Conversion::ok &&
         back == line;
}

bool convertsBothWaysInC(wchar_t unit) {
  char bytes[MB_LEN_MAX] = {};
  std::mbstate_t state{};
  const std::size_t size = std::wcrtomb(bytes, unit, &state);
  if (size == static_cast<std::size_t>(-1)) return false;
  wchar_t back = L'\0';
  state = {};
  return std::mbrtowc(&back, bytes, size, &state) <= size && back == unit;
}

/// The C library itself refuses nothing: it writes "EUR" or a question mark. A file converts by the locale
/// that the program had at the file's first wide text, so the present one tells as long as it is not changed
/// after that.
bool canExpress(SynchronisedBuffer& buffer, const std::wstring& line) {
  return std::all_of(line.begin(), line.end(), convertsBothWaysInC) || isWideFile(buffer.file());
}

/// A file buffer keeps what it failed to convert and refuses everything after it.
bool canExpress(const std::wfilebuf& buffer, const std::wstring& line) {
  const std::locale locale = buffer.getloc();
  return line.empty() || convertsBothWays(std::use_facet<Conversion>(locale), line);
}

}  // namespace

bool canExpress(std::wostream& stream, const std::wstring& line) {
  if (auto* const file = dynamic_cast<SynchronisedBuffer*>(stream.rdbuf())) return canExpress(*file, line);
  if (const auto* const file = dynamic_cast<std::wfilebuf*>(stream.rdbuf())) return canExpress(*file, line);
  return true;
}

}  // namespace log
}  // namespace ovra
