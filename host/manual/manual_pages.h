#ifndef MIRN_HOST_MANUAL_MANUAL_PAGES_H
#define MIRN_HOST_MANUAL_MANUAL_PAGES_H

#include <string>

namespace host {

// Pages of the system's manual, as text for troff with the macros "man". What they tell of the options comes
// from their table. `date`, such as 2026-01-31, stands at the foot.

/// mirn-host(8), the program.
std::string programPage(const std::string& date);

/// mirn-host.conf(5), its configuration file.
std::string configurationPage(const std::string& date);

}  // namespace host

#endif
