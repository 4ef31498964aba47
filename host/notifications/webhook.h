#ifndef MIRN_HOST_NOTIFICATIONS_WEBHOOK_H
#define MIRN_HOST_NOTIFICATIONS_WEBHOOK_H

#include <chrono>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>

#include "notifications/http_post.h"
#include "notifications/notification_targets.h"
#include "notifications/target.h"
#include "tick_clock.h"

namespace host {

/// Posts each delivery, signed, to a receiver.
class Webhook final : public INotificationTarget {
 public:
  static constexpr std::chrono::milliseconds kPatience{10'000};

  struct Settings {
    std::chrono::milliseconds patience;  ///< For the whole of a try.
    TickClock clock;
    std::string userAgent;
  };

  /// `number` is its place among all. Reads the files that the target names; raises `std::runtime_error` with
  /// the reason where they do not serve.
  Webhook(WebhookTarget target, std::size_t number, Settings settings);

  const std::string& name() const override { return m_name; }
  bool isRetried() const override { return true; }
  std::string tell(const Delivery& delivery) override;
  void stop() override;

 private:
  std::string requestOf(const Delivery& delivery) const;
  unsigned exchange(const std::string& request);

  const WebhookTarget m_target;
  const Settings m_settings;
  const std::string m_name;
  std::string m_secret;
  std::shared_ptr<IPostEncryption> m_encryption;  ///< Null where it goes in clear.

  std::mutex m_mutex;
  HttpPost* m_underWay = nullptr;
  bool m_isStopped = false;
};

}  // namespace host

#endif
