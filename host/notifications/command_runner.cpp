#include "notifications/command_runner.h"

#include <filesystem>
#include <stdexcept>

namespace host {

namespace {

ChildOrder orderOf(const std::vector<std::string>& words, const std::string& input,
                   std::chrono::milliseconds patience) {
  ChildOrder order{words, input, plainEnvironment(), patience};
  order.isHeard = false;
  order.folder = std::filesystem::u8path(words.front()).root_path().u8string();
  return order;
}

std::string wordsOf(const ChildResult& result) {
  switch (result.end) {
    case ChildEnd::kExited:
      return result.status == 0 ? "" : "it ended with the status " + std::to_string(result.status);
    case ChildEnd::kCrashed:
      return "it was ended by the signal " + std::to_string(result.status);
    case ChildEnd::kTooLate:
    case ChildEnd::kTooMuch:
      return "it took too long, and was ended";
    case ChildEnd::kStopped:
      return "the host stops";
  }
  return "it has ended";
}

}  // namespace

std::string CommandRunner::run(const std::vector<std::string>& words, const std::string& input,
                               std::chrono::milliseconds patience) const try {
  return wordsOf(m_runner.run(orderOf(words, input, patience)));
} catch (const std::runtime_error& failure) {
  return std::string("it cannot be run: ") + failure.what();
}

}  // namespace host
