#ifndef MIRN_HOST_NOTIFICATIONS_TARGET_H
#define MIRN_HOST_NOTIFICATIONS_TARGET_H

#include <string>

#include "notifications/delivery_queue.h"

namespace host {

/// Who is told. One thread at a time, but for `stop`.
class INotificationTarget {
 public:
  virtual ~INotificationTarget() = default;

  /// "webhook 1 (https://ops.example)"; shows no secret.
  virtual const std::string& name() const = 0;
  /// Whether what failed is tried again.
  virtual bool isRetried() const = 0;

  /// Tells it, and comes back in bounded time: empty where it was taken, else why it was not, which shows no
  /// secret. Raises nothing.
  virtual std::string tell(const Delivery& delivery) = 0;

  /// From any thread: a `tell` that is under way comes back within moments, and so does each later one.
  virtual void stop() = 0;
};

}  // namespace host

#endif
