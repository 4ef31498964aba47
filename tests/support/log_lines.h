#ifndef MIRN_TESTS_SUPPORT_LOG_LINES_H
#define MIRN_TESTS_SUPPORT_LOG_LINES_H

#include <iostream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "support/redirected_stream.h"
#include "text.h"

/// While it lives, catches the console's lines of warnings and errors.
class LogLines {
 public:
  /// The lines since the last `take`, without the time in front, such as `Warning: No such disk`.
  std::vector<std::string> take() {
    std::wistringstream written(m_buffer.str());
    m_buffer.str(L"");
    std::vector<std::string> lines;
    for (std::wstring line; std::getline(written, line);) lines.push_back(withoutTime(wideToUtf8(line)));
    return lines;
  }

 private:
  static std::string withoutTime(const std::string& line) {
    static const std::regex time("^\\[\\d\\d-\\d\\d-\\d{4} \\d\\d-\\d\\d-\\d\\d\\] ");
    return std::regex_replace(line, time, "");
  }

  std::wstringbuf m_buffer;
  RedirectedStream m_redirected{std::wcerr, m_buffer};
};

#endif
