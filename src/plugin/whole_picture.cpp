#include "whole_picture.h"

#include <utility>

#include "arrays_listener.h"
#include "basic_listener.h"
#include "controllers_listener.h"
#include "enddevices_listener.h"
#include "http_method.h"
#include "mirn_exception.h"
#include "plugin_setting.h"
#include "ports_listener.h"
#include "published_form.h"
#include "raids_listener.h"
#include "snapshot_reads.h"
#include "text.h"
#include "tick_clock.h"
#include "volumes_listener.h"

using ovra::data_transfer::ServiceObject;

namespace {

constexpr std::int64_t kTicksPerMillisecond = kTicksPerSecond / 1000;

/// Reads of one picture, without a lock. Changes no setting.
class PictureReads : public SnapshotReads {
 public:
  explicit PictureReads(Picture picture) : m_picture(std::move(picture)) {}

  Picture picture() override { return m_picture; }
  bool setLocateTimeout(std::int64_t) override { return false; }
  std::int64_t getLocateTimeout() override { return kLocateTimeoutDefault; }

 private:
  const Picture m_picture;
};

ServiceObject answerOf(IListener&& listener, const std::vector<std::wstring>& segments = {}) {
  return listener.handleRequest(HttpMethod::kGet, segments, {}, ServiceObject::null());
}

/// Null before the first picture.
ServiceObject versionOf(IMirnSession& reads, SessionActions& actions) {
  try {
    return answerOf(BasicListener(&reads, &actions), {L"version"});
  } catch (const MirnException&) {
    return ServiceObject::null();
  }
}

/// The ids under the id of their controller.
ServiceObject formOf(const MirnSnapshot::IdLists& lists) {
  ServiceObject object = ServiceObject::object();
  for (const auto& [controllerId, ids] : lists) {
    ServiceObject list = ServiceObject::array();
    for (std::size_t i = 0; i < ids.size(); ++i) list.at(i) = ids[i];
    object.member(controllerId) = std::move(list);
  }
  return object;
}

ServiceObject formOf(const ovra::PluginPosition& position) {
  return PublishedForm()
      .text(L"epoch", position.epoch)
      .number(L"revision", position.revision)
      .number(L"structure", position.structure)
      .number(L"sequence", position.sequence)
      .take();
}

ServiceObject momentOf(std::int64_t ticks) {
  ServiceObject moment;
  moment = static_cast<std::uint64_t>(ticks / kTicksPerMillisecond);
  return moment;
}

void tellTimes(PublishedForm& form, const PictureTimes& times) {
  form.part(L"takenAt", times.takenAt ? momentOf(*times.takenAt) : ServiceObject::null())
      .part(L"failedAt", times.failure ? momentOf(times.failure->at) : ServiceObject::null())
      .part(L"failure",
            times.failure ? ServiceObject(utf8ToWide(times.failure->words)) : ServiceObject::null());
}

}  // namespace

ServiceObject wholePicture(const DatedPicture& dated, SessionActions& actions) {
  PictureReads reads(dated.picture);
  PublishedForm form;
  form.part(L"position", formOf(dated.position));
  tellTimes(form, dated.times);
  form.part(L"state", answerOf(BasicListener(&reads, &actions), {L"state"}))
      .part(L"version", versionOf(reads, actions))
      .part(L"raids", answerOf(RaidsListener(&reads)))
      .part(L"controllers", answerOf(ControllersListener(&actions, &reads)))
      .part(L"arrays", answerOf(ArraysListener(&reads, &actions)))
      .part(L"enddevices", answerOf(EndDevicesListener(&reads)))
      .part(L"ports", answerOf(PortsListener(&reads, &actions)))
      .part(L"volumes", answerOf(VolumesListener(&reads, &actions)))
      .part(L"controllerArrays", formOf(dated.picture->controllerArrays))
      .part(L"controllerPorts", formOf(dated.picture->controllerPorts))
      .part(L"controllerVolumes", formOf(dated.picture->controllerVolumes));
  return form.take();
}
