#ifndef MIRN_TESTS_SUPPORT_EXPECTED_FILE_H
#define MIRN_TESTS_SUPPORT_EXPECTED_FILE_H

#include <string>

/// Texts that tests keep in files beside them, byte for byte.

/// Where two texts part, to be shown: the number of the first line that differs, and the line in both. Empty
/// when they are equal. Every byte counts, those at the end of a line as well.
std::string firstDifference(const std::string& expected, const std::string& actual);

/// `path` is UTF-8. A file that cannot be read or written raises `std::runtime_error`.
std::string readExpectedFile(const std::string& path);
void writeExpectedFile(const std::string& path, const std::string& text);

#endif
