#include "insight/stream_endpoint.h"

#include <chrono>
#include <cstdint>
#include <utility>

#include "api/allowed_source.h"
#include "api/api_path.h"
#include "api/places.h"
#include "insight/insight_read.h"
#include "insight/query_parameters.h"
#include "text.h"

namespace host {

namespace {

constexpr char kMediaType[] = "text/event-stream";
constexpr wchar_t kLastEventId[] = L"lastEventId";
constexpr std::size_t kLargestPart = 64 * 1024;

std::int64_t millisecondsGone() {
  using std::chrono::milliseconds;
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<milliseconds>(now).count();
}

/// What one client hears.
class EventSource final : public AnswerSource {
 public:
  using Next = AnswerPart::Next;

  EventSource(std::unique_ptr<Places::Place> place, std::shared_ptr<insight::Stream> stream,
              std::unique_ptr<insight::Stream::Listener> listener)
      : m_place(std::move(place)), m_stream(std::move(stream)), m_listener(std::move(listener)) {}

  AnswerPart take() override {
    AnswerPart part;
    while (part.bytes.size() < kLargestPart) {
      const std::string more = m_listener->take(millisecondsGone());
      if (more.empty()) {
        part.next = m_listener->isBehind()   ? Next::kAtOnce
                    : m_listener->isClosed() ? Next::kNone
                                             : Next::kLater;
        return part;
      }
      part.bytes += more;
    }
    part.next = Next::kAtOnce;
    return part;
  }

 private:
  const std::unique_ptr<Places::Place> m_place;
  const std::shared_ptr<insight::Stream> m_stream;
  const std::unique_ptr<insight::Stream::Listener> m_listener;  // goes before the stream
};

std::vector<DocumentedParameter> parameters() {
  return {
      {"lastEventId", false, "The id of the last event that was heard: EPOCH.ROW.", R"({"type": "string"})"}};
}

/// Whoever comes back says so in the field; the parameter stays what it was in the first URL.
std::string lastIdOf(const Call& call) {
  requireKnown(call.target.parameters, parameters());
  if (call.wishes.lastEventId) return *call.wishes.lastEventId;
  const auto parameter = call.target.parameters.find(kLastEventId);
  return parameter == call.target.parameters.end() ? std::string() : wideToUtf8(parameter->second);
}

OpenAnswer listen(const std::shared_ptr<insight::Stream>& stream, Places& places,
                  const std::shared_ptr<const Call>& call, const WakeSource& wake) {
  const std::string lastId = lastIdOf(*call);
  auto place = places.take();
  if (!place) throw Refusal(503, "Too many listen to what happens", {{"Retry-After", "2"}});
  auto listener = stream->listen(lastId, call->identity.role >= Role::kAdminister, wake);
  auto source = std::make_unique<EventSource>(std::move(place), stream, std::move(listener));
  return {{200, kMediaType, {}, {}}, whileAllowed(call, std::move(source))};
}

EndpointDocument document() {
  EndpointDocument document{
      "events",
      "stream",
      "Tells what happens, as it happens, for as long as the client listens.",
      "Server-sent events: event, job, alarm, service and, for who administers, audit, each with the "
      "history's entry; revision where the picture of the machine changes; gap with the first and the "
      "last number of entries that are not to be had; heartbeat; bye when the host stops. Who comes "
      "back with the last id, as Last-Event-ID or lastEventId, hears all from there on.",
      {{200, "The events.", R"({"type": "string"})", kMediaType}}};
  document.parameters = parameters();
  return document;
}

}  // namespace

void addStreamEndpoint(EndpointTable& table, const ovra::plugin_interface& plugin,
                       std::shared_ptr<insight::Stream> stream, std::size_t mostListeners) {
  ApiEndpoint endpoint = insightRead("streamEvents", apiPath(plugin, L"events/stream"));
  endpoint.document = document();
  const auto places = std::make_shared<Places>(mostListeners);
  endpoint.begin = [stream = std::move(stream), places](const std::shared_ptr<const Call>& call,
                                                        const std::shared_ptr<Exchange>& exchange,
                                                        const std::string&) {
    exchange->answerInParts(
        [stream, places, call](const WakeSource& wake) { return listen(stream, *places, call, wake); });
  };
  table.add(std::move(endpoint));
}

}  // namespace host
