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

/// The lines are these on both streams, but for the time and the level that stand ahead of an error.
inline void expectLines(const WrittenConsole& console, const std::string& lines) {
  ASSERT_EQ(console.exitCode, 0);
  EXPECT_EQ(console.output, lines);
  const std::string bare =
      std::regex_replace(console.errors, std::regex(R"(\[[-0-9]{10} [-0-9]{8}\] Error: )"), "");
  EXPECT_EQ(bare, lines);
  EXPECT_NE(bare, console.errors);
}

#endif
