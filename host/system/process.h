#ifndef MIRN_HOST_SYSTEM_PROCESS_H
#define MIRN_HOST_SYSTEM_PROCESS_H

namespace host {

/// Ends the process without another step of its code: threads may still be under way in it. One source
/// for each system.
[[noreturn]] void leaveProcess(int status);

}  // namespace host

#endif
