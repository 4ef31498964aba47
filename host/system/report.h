#ifndef MIRN_HOST_SYSTEM_REPORT_H
#define MIRN_HOST_SYSTEM_REPORT_H

#include <string>

namespace host {

/// What the host has to say to who started it: whole lines, from any thread. `line` has no line end.

/// To standard output: what a script reads.
void announce(const std::string& line);

/// To standard error, after the program's name.
void report(const std::string& line);

/// To standard error as it is.
void writeToErrors(const std::string& line);

}  // namespace host

#endif
