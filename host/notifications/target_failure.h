#ifndef MIRN_HOST_NOTIFICATIONS_TARGET_FAILURE_H
#define MIRN_HOST_NOTIFICATIONS_TARGET_FAILURE_H

#include <chrono>
#include <optional>
#include <string>

namespace host {

/// Since when a target fails, and why. One thread at a time.
class TargetFailure {
 public:
  using Moment = std::chrono::steady_clock::time_point;

  /// For so long it is nobody's business.
  static constexpr std::chrono::seconds kLong{60};

  /// The end of a try, `reason` being empty where it went well. True where that is new: the first failure, or
  /// the end of them.
  bool take(const std::string& reason, Moment now) {
    const bool wasFailing = m_since.has_value();
    if (reason.empty()) {
      m_since.reset();
    } else if (!wasFailing) {
      m_since = now;
    }
    m_reason = reason;
    return wasFailing == reason.empty();
  }

  /// The last try failed, and so did all for a minute.
  bool isLong(Moment now) const { return m_since && now - *m_since >= kLong; }
  const std::string& reason() const { return m_reason; }

 private:
  std::optional<Moment> m_since;
  std::string m_reason;
};

}  // namespace host

#endif
