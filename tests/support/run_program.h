#ifndef MIRN_TESTS_SUPPORT_RUN_PROGRAM_H
#define MIRN_TESTS_SUPPORT_RUN_PROGRAM_H

#include <string>
#include <vector>

/// Runs the program at `path`, or of that name in the search path, to its end. Its streams and environment
/// are those of this process. The result is its exit code, or -1 when it was not started or was ended.
int runProgram(const std::string& path, const std::vector<std::string>& arguments);

#endif
