#ifndef MIRN_HOST_SYSTEM_TERMINAL_H
#define MIRN_HOST_SYSTEM_TERMINAL_H

namespace host {

/// Whether somebody reads standard output as it is written, and nothing keeps it; one source a system.
bool isOutputTerminal();

}  // namespace host

#endif
