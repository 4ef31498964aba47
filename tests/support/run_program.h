#ifndef MIRN_TESTS_SUPPORT_RUN_PROGRAM_H
#define MIRN_TESTS_SUPPORT_RUN_PROGRAM_H

#include <string>
#include <vector>

/// Runs the program at `path`, or of that name in the search path, to its end. Its streams and environment
/// are those of this process.
/// @return its exit code; -1 when it was not started or did not exit by itself
int runProgram(const std::string& path, const std::vector<std::string>& arguments);

#endif
