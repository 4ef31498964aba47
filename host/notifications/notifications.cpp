#include "notifications/notifications.h"

#include <boost/asio/ip/host_name.hpp>
#include <utility>

#include "history/entry.h"
#include "notifications/command_target.h"
#include "notifications/notifier.h"
#include "notifications/webhook.h"
#include "service/insight_service.h"
#include "system/report.h"
#include "tick_clock.h"

namespace host {

namespace {

/// Empty where the system does not tell it.
std::string hostName() {
  boost::system::error_code error;
  return boost::asio::ip::host_name(error);
}

Notifier::Targets targetsOf(const NotificationTargets& settings, const std::string& userAgent) {
  Notifier::Targets targets;
  for (const WebhookTarget& target : settings.webhooks) {
    targets.push_back(std::make_unique<Webhook>(
        target, targets.size() + 1, Webhook::Settings{Webhook::kPatience, currentTicks, userAgent}));
  }
  if (!settings.command.empty()) {
    targets.push_back(std::make_unique<CommandTarget>(settings.command, CommandTarget::kPatience));
  }
  return targets;
}

}  // namespace

void checkNotifications(const NotificationTargets& targets) { targetsOf(targets, {}); }

std::shared_ptr<Notifier> startNotifications(const NotificationTargets& targets,
                                             const std::shared_ptr<insight::InsightService>& service,
                                             const std::string& userAgent) {
  if (targets.isEmpty()) return {};
  Notifier::Targets made = targetsOf(targets, userAgent);
  if (!service) {
    report("nobody is told of alarms: none are known of this plug-in");
    return {};
  }
  Notifier::Settings settings;
  settings.leastSeverity = insight::severityOf(targets.leastSeverity).value_or(settings.leastSeverity);
  settings.hostName = hostName();
  const auto notifier = std::make_shared<Notifier>(std::move(made), std::move(settings));
  notifier->start(
      [service = std::weak_ptr<insight::InsightService>(service)](const insight::ServiceNote& note) {
        if (const auto taker = service.lock()) taker->note(note);
      });
  service->tellAlarmsTo(notifier);
  return notifier;
}

void stopNotifications(const std::shared_ptr<Notifier>& notifier) {
  if (notifier) notifier->stop();
}

}  // namespace host
