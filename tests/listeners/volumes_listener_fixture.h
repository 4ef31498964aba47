#ifndef MIRN_TESTS_LISTENERS_VOLUMES_LISTENER_FIXTURE_H
#define MIRN_TESTS_LISTENERS_VOLUMES_LISTENER_FIXTURE_H

#include "listeners/listener_requests.h"
#include "volumes_listener.h"

/// A degraded volume 7 in array 21, and a free disk 43 to rebuild it with.
inline void arrangeVolume(FakeSession& session) {
  session.volumes = {aVolume(L"5").name(L"Logs"),
                     aVolume(L"7").name(L"Data").inArray(L"21").state(VolumeState::DEGRADED)};
  session.endDevices = {aDisk(L"41").inArray(L"21"), aDisk(L"42").inArray(L"21"), aDisk(L"43")};
  session.controllers = {aController(L"11").setsCachePolicy(false), aController(L"12")};
  session.controllerVolumes = {{L"11", {L"5"}}, {L"12", {L"7"}}};
}

class VolumesListenerTest : public ListenerTest<VolumesListener> {
 protected:
  VolumesListenerTest() { arrangeVolume(m_session); }

  /// What the action does to volume 7.
  template <class Change>
  void whenActing(Change change) {
    m_session.duringAction = [this, change] { change(m_session.volume(L"7")); };
  }
};

#endif
