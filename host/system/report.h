#ifndef MIRN_HOST_SYSTEM_REPORT_H
#define MIRN_HOST_SYSTEM_REPORT_H

#include <functional>
#include <string>

namespace host {

/// What the host has to say to who started it: whole lines, from any thread. `line` has no line end.

enum class LineKind { kAnnouncement, kReport, kLog };

/// Who gets each line, too, as it was handed over, one at a time; empty for nobody. Raises nothing.
using LineReceiver = std::function<void(LineKind kind, const std::string& line)>;

/// For a process whose streams nobody reads.
void tellLinesTo(LineReceiver receiver);

/// To standard output: what a script reads.
void announce(const std::string& line);

/// To standard error, after the program's name.
void report(const std::string& line);

/// To standard error as it is.
void writeToErrors(const std::string& line);

}  // namespace host

#endif
