#ifndef MIRN_HOST_SYSTEM_SERVICE_MANAGER_H
#define MIRN_HOST_SYSTEM_SERVICE_MANAGER_H

#include <chrono>
#include <string>

namespace host {

// What the system's service manager is told that started the process; nothing where none did. One source a
// system. All are safe from any thread and raise nothing.

/// The host serves; also after a reload. `status` is a line for people.
void tellReady(const std::string& status);

/// The files of the configuration are being read again.
void tellReloading();

/// The host stops, within `time`: for so long it may be silent, too.
void tellStopping(std::chrono::milliseconds time);

/// The process is about to be left in the middle of its stop, with that status.
void tellLeaving(int result);

/// How often the manager wants to hear a beat, lest it start the host anew; zero when it does not listen.
/// That is half of what it was told to wait.
std::chrono::microseconds beatInterval();

void tellAlive();

}  // namespace host

#endif
