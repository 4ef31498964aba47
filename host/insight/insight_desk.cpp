#include "insight/insight_desk.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "actions/operation.h"
#include "metrics/insight_metrics.h"
#include "service/insight_service.h"
#include "view/machine_view_source.h"

namespace host {

namespace {

constexpr wchar_t kReadableKey[] = L"mirn";

std::int64_t millisecondsNow() {
  using std::chrono::milliseconds;
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<milliseconds>(now).count();
}

}  // namespace

std::shared_ptr<InsightDesk> insightDeskOf(ovra::service_plugin_interface& plugin,
                                           const std::vector<std::wstring>& keys,
                                           const std::filesystem::path& history) {
  auto* const described = dynamic_cast<ovra::described_plugin_1*>(&plugin);
  auto* const watched = dynamic_cast<ovra::watched_plugin_1*>(&plugin);
  auto* const rehearsed = dynamic_cast<ovra::rehearsed_plugin_1*>(&plugin);
  const bool isKnown = std::find(keys.begin(), keys.end(), kReadableKey) != keys.end();
  if (!isKnown || described == nullptr || watched == nullptr || rehearsed == nullptr) return {};
  auto views = std::make_shared<insight::MachineViewSource>(*watched);
  const auto description = described->describe();
  auto operations =
      std::make_shared<const std::vector<insight::Operation>>(insight::operationsOf(description));
  auto service = std::make_shared<insight::InsightService>(
      *watched, *views, description, insight::InsightService::Settings{history, millisecondsNow});
  auto metrics = std::make_shared<insight::InsightMetrics>(*service, description);
  return std::make_shared<InsightDesk>(InsightDesk{plugin, *watched, *rehearsed, std::move(views),
                                                   std::move(operations), std::move(service),
                                                   std::move(metrics)});
}

void beginWatch(const InsightDesk& desk) { desk.service->start(); }

void announceStop(const InsightDesk& desk) { desk.service->announceStop(); }

}  // namespace host
