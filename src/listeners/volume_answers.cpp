#include "volume_answers.h"

#include "answers.h"
#include "listener_steps.h"
#include "request_keys.h"

namespace {

constexpr unsigned kBytesToMebibytes = 20;  // bits to shift

ServiceObject textOrNull(const std::wstring& text) {
  return text.empty() ? ServiceObject::null() : ServiceObject(text);
}

void tellChanges(PublishedForm& answer, const Volume& before, const Volume& now) {
  if (now.totalSize() != before.totalSize()) answer.size(keys::kSize, now.totalSize() >> kBytesToMebibytes);
  tellChange(answer, keys::kCachePolicy, before.cachePolicy(), now.cachePolicy());
  tellChange(answer, keys::kRaidLevel, before.raidLevel(), now.raidLevel());
  tellChange(answer, keys::kStripSize, before.stripSize(), now.stripSize());
  tellChange(answer, keys::kRwhPolicy, before.rwhPolicy(), now.rwhPolicy());
  if (now.journalingDriveId() != before.journalingDriveId()) {
    answer.part(keys::kJournalingDriveId, textOrNull(now.journalingDriveId()));
  }
}

}  // namespace

ServiceObject makeStateResponse(IMirnSession& session, const Volume& before) {
  return answerAfterAction([&] {
    const Volume now = findVolume(session, before.id());
    PublishedForm answer;
    answer.text(keys::kVolumeId, now.id());
    tellChange(answer, keys::kState, before.state(), now.state());
    return answer.take();
  });
}

ServiceObject makeNameResponse(IMirnSession& session, const std::wstring& name) {
  return answerAfterAction([&] {
    const Volume now = findVolumeByName(session, name);
    return PublishedForm().text(keys::kVolumeId, now.id()).text(keys::kName, now.name()).take();
  });
}

ServiceObject makeVolumeResponse(IMirnSession& session, const Volume& before, bool withDisks) {
  return answerAfterAction([&] {
    const Volume now = findVolume(session, before.id());
    PublishedForm answer;
    answer.text(keys::kVolumeId, now.id());
    tellChanges(answer, before, now);
    if (withDisks) answer.part(keys::kDisks, idsOf(session.getArrayEndDevices(now.arrayId())));
    return answer.take();
  });
}

ServiceObject makeCreatedResponse(IMirnSession& session, const std::wstring& name) {
  return answerAfterAction([&] { return findVolumeByName(session, name).toServiceObject(); });
}
