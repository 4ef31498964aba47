#include "volume_answers.h"

#include "answers.h"
#include "listener_steps.h"

namespace {

constexpr unsigned kBytesToMebibytes = 20;  // bits to shift

VolumeAnswer changesOf(const Volume& before, const Volume& now) {
  VolumeAnswer answer;
  answer.volumeId = now.id();
  if (now.totalSize() != before.totalSize()) answer.size = now.totalSize() >> kBytesToMebibytes;
  answer.cachePolicy = changed(before.cachePolicy(), now.cachePolicy());
  answer.raidLevel = changed(before.raidLevel(), now.raidLevel());
  answer.stripSize = changed(before.stripSize(), now.stripSize());
  answer.rwhPolicy = changed(before.rwhPolicy(), now.rwhPolicy());
  answer.journalingDriveId = changed(before.journalingDriveId(), now.journalingDriveId());
  return answer;
}

}  // namespace

ServiceObject makeStateResponse(IMirnSession& session, const Volume& before) {
  return answerAfterAction([&] {
    const Volume now = findVolume(session, before.id());
    return formOf(VolumeStateAnswer{now.id(), changed(before.state(), now.state())});
  });
}

ServiceObject makeNameResponse(IMirnSession& session, const std::wstring& name) {
  return answerAfterAction([&] {
    const Volume now = findVolumeByName(session, name);
    return formOf(VolumeNameAnswer{now.id(), now.name()});
  });
}

ServiceObject makeVolumeResponse(IMirnSession& session, const Volume& before, bool withDisks) {
  return answerAfterAction([&] {
    const Volume now = findVolume(session, before.id());
    VolumeAnswer answer = changesOf(before, now);
    if (withDisks) answer.disks = idsOf(session.getArrayEndDevices(now.arrayId()));
    return formOf(answer);
  });
}

ServiceObject makeCreatedResponse(IMirnSession& session, const std::wstring& name) {
  return answerAfterAction([&] { return findVolumeByName(session, name).toServiceObject(); });
}
