#ifndef MIRN_HOST_NOTIFICATIONS_NOTIFICATIONS_H
#define MIRN_HOST_NOTIFICATIONS_NOTIFICATIONS_H

#include <memory>
#include <string>

#include "notifications/notification_targets.h"

namespace insight {
class InsightService;
}

namespace host {

class Notifier;

/// Looks whether the targets could be told: files of secrets and authorities, the program. Raises
/// `std::runtime_error` with the first that is wrong, and shows nothing that is secret.
void checkNotifications(const NotificationTargets& targets);

/// Has the targets told of what `service` finds, ahead of its first look, by a program that calls itself
/// `userAgent`. Null where there are none, or where `service` is null, which is reported. To be stopped
/// before the service ends. Raises as `checkNotifications` does.
std::shared_ptr<Notifier> startNotifications(const NotificationTargets& targets,
                                             const std::shared_ptr<insight::InsightService>& service,
                                             const std::string& userAgent);

/// Within moments; what waits still is told as dropped. `notifier` may be null.
void stopNotifications(const std::shared_ptr<Notifier>& notifier);

}  // namespace host

#endif
