#ifndef MIRN_BENCH_RENAMING_H
#define MIRN_BENCH_RENAMING_H

#include <cstdlib>
#include <iostream>
#include <string>

#include "library_calls.h"
#include "mirn_session.h"
#include "running_plugin.h"

/// Gives a volume two names in turn, in the library as well.
class Renaming {
 public:
  explicit Renaming(RunningPlugin& running) : m_running(running) {
    const Volume volume = MirnSession().takeSnapshot().volumes.front();
    m_id = volume.id();
    m_handle = volume.handle();
    running.library.effect(
        onEveryCall("VexVolumeRename"), [](ScriptedMachine& machine, const ScriptedCall& call) {
          setText(machine.volumes.at(static_cast<VEX_HANDLE>(call.arguments[0].number)).name,
                  call.arguments[1].bytes);
        });
  }

  void rename() {
    RunningPlugin::ServiceObject body;
    body.member(L"name") = m_isFirst ? std::wstring(L"Second name") : std::wstring(L"First name");
    m_isFirst = !m_isFirst;
    if (m_running.put(L"mirn/volumes", {m_id, L"name"}, body).isObject()) return;
    std::cerr << "The volume was not renamed.\n";
    std::exit(EXIT_FAILURE);
  }

  /// The library's part of that alone.
  void callLibrary() const {
    VexVolumeRename(m_handle, "Another name");
    callLibraryAsASnapshotDoes();
  }

 private:
  RunningPlugin& m_running;
  std::wstring m_id;
  VEX_HANDLE m_handle = 0;
  bool m_isFirst = false;
};

#endif
