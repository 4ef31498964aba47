#ifndef MIRN_HOST_NOTIFICATIONS_NOTIFICATION_TARGETS_H
#define MIRN_HOST_NOTIFICATIONS_NOTIFICATION_TARGETS_H

#include <string>
#include <vector>

#include "notifications/webhook_url.h"

namespace host {

/// One receiver over HTTP.
struct WebhookTarget {
  WebhookUrl url;
  std::string secretFile;
  std::string authorities;  ///< PEM, trusted instead of the system's; empty: the system's.
};

/// Who is told of alarms. Plain value.
struct NotificationTargets {
  std::vector<WebhookTarget> webhooks;
  std::vector<std::string> command;       ///< Its program and arguments; empty: none.
  std::string leastSeverity = "warning";  ///< Of an alarm that is told.

  bool isEmpty() const { return webhooks.empty() && command.empty(); }
};

}  // namespace host

#endif
