#include "events_listener.h"

#include "answers.h"
#include "event_journal.h"
#include "messages.h"
#include "requests.h"

using namespace std::placeholders;

namespace {

std::wstring requestedTime(const RequestParameters& parameters) {
  try {
    return parameters.at(keys::kTime);
  } catch (const std::out_of_range&) {
    refuse(kErrorInvalidParameter, kMsgTimeMissing);
  }
}

ServiceObject getEvents(const RouteMatch&, const RequestParameters& parameters, const ServiceObject&) {
  const auto seconds = parseNumber<std::uint32_t>(requestedTime(parameters), kMsgInvalidTime);
  return listOf(EventJournal::instance().getRecent(seconds),
                [](const EventJournal::Event& event) { return event->toServiceObject(); });
}

}  // namespace

EventsListener::EventsListener() { addRoute(RouteId::kListEvents, std::bind(getEvents, _1, _2, _3)); }
