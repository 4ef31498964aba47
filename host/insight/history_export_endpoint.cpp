#include "insight/history_export_endpoint.h"

#include <boost/json/serialize.hpp>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "api/allowed_source.h"
#include "api/api_path.h"
#include "api/places.h"
#include "insight/history_reading.h"
#include "insight/insight_read.h"
#include "insight/query_parameters.h"

namespace host {

namespace {

constexpr char kMediaType[] = "application/x-ndjson";
constexpr std::size_t kEntriesOfPart = 1000;
constexpr std::size_t kMostExports = 16;  // at once: they take turns with those who listen

/// Which entries are wanted, by their moments.
struct Span {
  std::optional<std::int64_t> fromMs;
  std::optional<std::int64_t> toMs;

  bool has(std::int64_t atMs) const { return (!fromMs || atMs >= *fromMs) && (!toMs || atMs < *toMs); }
};

/// The rows that there were at the start, part by part.
class ExportSource final : public AnswerSource {
 public:
  using Next = AnswerPart::Next;

  ExportSource(std::unique_ptr<Places::Place> place, std::shared_ptr<insight::History> history, Span span,
               std::int64_t lastRow)
      : m_place(std::move(place)),
        m_history(std::move(history)),
        m_span(span),
        m_epoch(m_history->epoch()),
        m_lastRow(lastRow) {}

  AnswerPart take() override {
    const std::vector<insight::Entry> entries = m_history->entriesAfter(m_row, kEntriesOfPart);
    if (m_history->epoch() != m_epoch) throw std::runtime_error("the history has begun anew");
    AnswerPart part;
    for (const insight::Entry& entry : entries) {
      m_row = entry.row;
      if (m_row > m_lastRow) break;
      if (m_span.has(entry.atMs)) part.bytes += boost::json::serialize(insight::formOf(entry)) + '\n';
    }
    part.next = entries.empty() || m_row >= m_lastRow ? Next::kNone : Next::kAtOnce;
    return part;
  }

 private:
  const std::unique_ptr<Places::Place> m_place;
  const std::shared_ptr<insight::History> m_history;
  const Span m_span;
  const std::string m_epoch;
  const std::int64_t m_lastRow;
  std::int64_t m_row = 0;
};

std::vector<DocumentedParameter> parameters() {
  constexpr char kMoment[] = R"({"type": "string", "format": "date-time"})";
  return {{"from", false, "What happened then or later.", kMoment},
          {"to", false, "What happened before then.", kMoment}};
}

Span spanIn(const Call& call) {
  requireKnown(call.target.parameters, parameters());
  const Span span{momentIn(call.target.parameters, "from"), momentIn(call.target.parameters, "to")};
  if (span.fromMs && span.toMs && *span.fromMs > *span.toMs) {
    throw Refusal(400, R"(The parameter "from" lies behind "to")");
  }
  return span;
}

OpenAnswer beginExport(const std::shared_ptr<insight::History>& history, Places& places,
                       const std::shared_ptr<const Call>& call) {
  const Span span = spanIn(*call);
  requireHistory(*history);
  auto place = places.take();
  if (!place) throw Refusal(503, "Too many read the whole history", {{"Retry-After", "10"}});
  const std::int64_t lastRow = readingHistory([&] { return history->newestRow(); });
  auto source = std::make_unique<ExportSource>(std::move(place), history, span, lastRow);
  return {{200, kMediaType, {}, {}}, whileAllowed(call, std::move(source))};
}

EndpointDocument document() {
  EndpointDocument document{
      "history",
      "export",
      "Gives all of the history, oldest first, as lines of JSON.",
      "Each line is an entry as GET history has it. What is added meanwhile is not among them. An answer "
      "that breaks off has no end that its client would take for one.",
      {{200, "A line for each entry.", R"({"type": "string"})", kMediaType}, {422, {}}}};
  document.parameters = parameters();
  return document;
}

}  // namespace

void addHistoryExportEndpoint(EndpointTable& table, const ovra::plugin_interface& plugin,
                              std::shared_ptr<insight::History> history) {
  ApiEndpoint endpoint = insightRead("exportHistory", apiPath(plugin, L"history/export"));
  endpoint.role = Role::kAdminister;
  endpoint.document = document();
  const auto places = std::make_shared<Places>(kMostExports);
  endpoint.begin = [history = std::move(history), places](const std::shared_ptr<const Call>& call,
                                                          const std::shared_ptr<Exchange>& exchange,
                                                          const std::string&) {
    exchange->answerInParts(
        [history, places, call](const WakeSource&) { return beginExport(history, *places, call); });
  };
  table.add(std::move(endpoint));
}

}  // namespace host
