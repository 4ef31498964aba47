#ifndef MIRN_HOST_SYSTEM_STOP_SIGNAL_WINDOWS_H
#define MIRN_HOST_SYSTEM_STOP_SIGNAL_WINDOWS_H

namespace host {

/// A stop signal that comes neither from the console nor from the keyboard. Any thread may give it.
void requestStop();

/// What the system calls with an event of the console, on a thread of its own; nonzero when it is ours. The
/// first Ctrl+C or Ctrl+Break is a stop signal, a second one ends the process at once. The close of the
/// console and the shutdown are one, too: as the system ends the process on the return from them, they last
/// until it ends itself.
int __stdcall onConsoleEvent(unsigned long event);

}  // namespace host

#endif
