#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <locale>
#include <string>

#include "console_provider.h"
#include "logging/console_writer.h"

/// Reports the texts, as information, as errors and as warnings:
/// `console_writer LOCALE STREAMS OUT ERRORS`, where OUT and ERRORS are the files that become the
/// standard streams.
int main(int count, char** arguments) {
  if (count != 5) return 1;
  const std::string locale = arguments[1];
  const std::string streams = arguments[2];
  // Afresh, so that nothing was written yet.
  if (!std::freopen(arguments[3], "w", stdout) || !std::freopen(arguments[4], "w", stderr)) return 1;
  if (!std::setlocale(LC_ALL, locale.c_str())) return kNoSuchLocale;
  if (streams == kUnsynchronised) {
    std::ios::sync_with_stdio(false);
    std::wcout.imbue(std::locale(locale));
    std::wcerr.imbue(std::locale(locale));
  } else if (streams == kWide) {
    makeWide(stdout);
    makeWide(stderr);
  }

  ovra::log::LoggerConsoleProvider provider;
  for (const LogLevel level : {LogLevel::kInfo, LogLevel::kError, LogLevel::kWarning}) {
    for (const wchar_t* text : kConsoleTexts) provider.report(level, text);
  }
  // Every line is flushed; at an ordinary end the leak check would tell of the C library's copy of LOCPATH.
  std::_Exit(std::wcout.good() && std::wcerr.good() ? 0 : kFailedStream);
}
