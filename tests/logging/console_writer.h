#ifndef MIRN_TESTS_LOGGING_CONSOLE_WRITER_H
#define MIRN_TESTS_LOGGING_CONSOLE_WRITER_H

#include <cstdio>

// What the program that writes to its console and the tests that read it know in common.

/// One a line; the half-way house of Latin-1, what only few tables hold, what some write as a backslash, what
/// ends in the byte of a line end when it is cut, a code of two units, and a plain end.
constexpr const wchar_t* kConsoleTexts[] = {L"Mirn is ready",
                                            L"caf\x00E9",
                                            L"5 \x20AC",
                                            L"5 \x00A5",
                                            (L"a\x010A"
                                             L"b"),
                                            L"disk \xD83D\xDCBE",
                                            L"end"};

constexpr char kSynchronised[] = "synchronised";
constexpr char kUnsynchronised[] = "unsynchronised";  ///< The streams have the locale, too.
constexpr char kWide[] = "wide";                      ///< Synchronised, above files that hold wide text.

constexpr int kNoSuchLocale = 2;
constexpr int kFailedStream = 3;

/// Where the system knows files that hold wide text.
void makeWide(std::FILE* file);

#endif
