#include "whole_picture.h"

#include <utility>

#include "http_method.h"
#include "list_form.h"
#include "listener_table.h"
#include "lookup.h"
#include "mirn_exception.h"
#include "plugin_identity.h"
#include "plugin_setting.h"
#include "published_form.h"
#include "rehearsed_session.h"
#include "text.h"
#include "tick_clock.h"

using ovra::data_transfer::ServiceObject;

namespace {

/// What a route for reading answers, given by the path key of its branch below the plug-in's own.
ServiceObject answerOf(RehearsedSession& session, const std::wstring& branch,
                       const std::vector<std::wstring>& segments = {}) {
  const auto listener = lookUp(listenerMakers(), kPluginCode + branch)(session, session);
  return listener->handleRequest(HttpMethod::kGet, segments, {}, ServiceObject::null());
}

/// Null before the first picture.
ServiceObject versionOf(RehearsedSession& session) {
  try {
    return answerOf(session, L"", {L"version"});
  } catch (const MirnException&) {
    return ServiceObject::null();
  }
}

/// The ids under the id of their controller.
ServiceObject formOf(const MirnSnapshot::IdLists& lists) {
  ServiceObject object = ServiceObject::object();
  for (const auto& [controllerId, ids] : lists) object.member(controllerId) = textsOf(ids);
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

ServiceObject wholePicture(const DatedPicture& dated) {
  RehearsedSession session(dated.picture, kLocateTimeoutDefault);
  PublishedForm form;
  form.part(L"position", formOf(dated.position));
  tellTimes(form, dated.times);
  form.part(L"state", answerOf(session, L"", {L"state"})).part(L"version", versionOf(session));
  for (const wchar_t* const list :
       {L"raids", L"controllers", L"arrays", L"enddevices", L"ports", L"volumes"}) {
    form.part(list, answerOf(session, std::wstring(L"/") + list));
  }
  form.part(L"controllerArrays", formOf(dated.picture->controllerArrays))
      .part(L"controllerPorts", formOf(dated.picture->controllerPorts))
      .part(L"controllerVolumes", formOf(dated.picture->controllerVolumes));
  return form.take();
}
