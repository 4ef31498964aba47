#ifndef MIRN_TESTS_HOST_TEST_PLUGIN_TRACE_H
#define MIRN_TESTS_HOST_TEST_PLUGIN_TRACE_H

#include <string>

/// Appends a line to the file that TEST_PLUGIN_TRACE names, or to one of its name in small letters in
/// the folder of the process, if it is there.
void trace(const std::string& line);

/// The value of an environment variable; empty when it is not set.
std::string setting(const char* name);

#endif
