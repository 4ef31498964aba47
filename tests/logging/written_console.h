#ifndef MIRN_TESTS_LOGGING_WRITTEN_CONSOLE_H
#define MIRN_TESTS_LOGGING_WRITTEN_CONSOLE_H

#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "logging/console_writer.h"
#include "support/run_program.h"
#include "support/temporary_folder.h"

struct ConsoleRow {
  const char* name;
  const char* locale;
  const char* streams;
  std::string lines;
};

/// What a program of its own wrote to its console.
struct WrittenConsole {
  int exitCode;
  std::string output;
  std::string errors;
};

inline WrittenConsole writeConsole(const std::string& locale, const std::string& streams) {
  const TemporaryFolder folder;
  const std::string output = (folder / "output").string();
  const std::string errors = (folder / "errors").string();
  const int exitCode = runProgram(MIRN_CONSOLE_WRITER, {locale, streams, output, errors});
  return {exitCode, readText(output), readText(errors)};
}

/// `lines`, with what matches `prefix` taken from the beginning of each; empty when one lacks it.
inline std::string withoutPrefix(const std::string& lines, const std::string& prefix) {
  std::string bare;
  const std::regex line(prefix + "([^\\n]*\\n)");
  for (std::size_t begin = 0; begin < lines.size();) {
    const std::size_t end = lines.find('\n', begin) + 1;
    std::smatch match;
    const std::string whole = lines.substr(begin, end - begin);
    if (end == 0 || !std::regex_match(whole, match, line)) return {};
    bare += match[1];
    begin = end;
  }
  return bare;
}

/// The lines are these on the output, and twice on the error stream behind time and level: as errors and
/// as warnings.
inline void expectLines(const WrittenConsole& console, const std::string& lines) {
  ASSERT_EQ(console.exitCode, 0);
  EXPECT_EQ(console.output, lines);
  const std::string time = R"(\[[-0-9]{10} [-0-9]{8}\] )";
  const std::size_t warnings = console.errors.find("] Warning: ");
  ASSERT_NE(warnings, std::string::npos);
  const std::size_t half = console.errors.rfind('\n', warnings) + 1;
  EXPECT_EQ(withoutPrefix(console.errors.substr(0, half), time + "Error: "), lines);
  EXPECT_EQ(withoutPrefix(console.errors.substr(half), time + "Warning: "), lines);
}

#endif
