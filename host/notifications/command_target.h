#ifndef MIRN_HOST_NOTIFICATIONS_COMMAND_TARGET_H
#define MIRN_HOST_NOTIFICATIONS_COMMAND_TARGET_H

#include <chrono>
#include <string>
#include <vector>

#include "notifications/command_runner.h"
#include "notifications/target.h"

namespace host {

/// Runs a program for each delivery, one at a time, with the delivery on its input. One that fails is not run
/// again: it may have done half of its work.
class CommandTarget final : public INotificationTarget {
 public:
  static constexpr std::chrono::milliseconds kPatience{30'000};

  /// `words` begin with the program's absolute path. Raises `std::runtime_error` where that is no program.
  CommandTarget(std::vector<std::string> words, std::chrono::milliseconds patience);

  const std::string& name() const override { return m_name; }
  bool isRetried() const override { return false; }
  std::string tell(const Delivery& delivery) override {
    return m_runner.run(m_words, delivery.body, m_patience);
  }
  void stop() override { m_runner.stop(); }

 private:
  const std::vector<std::string> m_words;
  const std::chrono::milliseconds m_patience;
  const std::string m_name;
  CommandRunner m_runner;
};

}  // namespace host

#endif
