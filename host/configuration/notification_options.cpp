#include "configuration/notification_options.h"

#include <filesystem>
#include <iomanip>
#include <sstream>
#include <stdexcept>

namespace host {

namespace {

constexpr std::size_t kMostWebhooks = 16;

/// The words of a value, between blanks. One in double quotes may have blanks; a quote or a backslash in it
/// has a backslash in front.
std::vector<std::string> wordsOf(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> words;
  for (std::string word; !(in >> std::ws).eof();) {
    if (!(in >> std::quoted(word))) throw ValueError("has a quote without an end");
    words.push_back(word);
  }
  return words;
}

WebhookUrl urlIn(const std::string& word) try {
  return webhookUrlOf(word);
} catch (const std::invalid_argument& failure) {
  throw ValueError(failure.what());
}

/// What stands behind "NAME=".
std::string fileIn(const std::string& word, const std::string& name) {
  const std::string file = word.substr(name.size() + 1);
  if (file.empty()) throw ValueError("has nothing behind '" + name + "='");
  return file;
}

void takePart(WebhookTarget& target, const std::string& word) {
  const auto isOf = [&](const std::string& name) { return word.rfind(name + '=', 0) == 0; };
  if (isOf("secret") && target.secretFile.empty()) {
    target.secretFile = fileIn(word, "secret");
  } else if (isOf("ca") && target.authorities.empty()) {
    target.authorities = fileIn(word, "ca");
  } else {
    throw ValueError("is not URL secret=FILE [ca=FILE]");
  }
}

void takeWebhook(Options& options, const std::string& text) {
  const std::vector<std::string> words = wordsOf(text);
  if (words.empty()) throw ValueError("is not URL secret=FILE [ca=FILE]");
  WebhookTarget target;
  target.url = urlIn(words.front());
  for (std::size_t i = 1; i < words.size(); ++i) takePart(target, words[i]);
  if (target.secretFile.empty())
    throw ValueError("has no 'secret=FILE', by which a receiver knows this host");
  if (!target.authorities.empty() && !target.url.isEncrypted)
    throw ValueError("has a 'ca=FILE' without https");
  std::vector<WebhookTarget>& webhooks = options.notifications.webhooks;
  if (webhooks.size() == kMostWebhooks) {
    throw ValueError("is there more than " + std::to_string(kMostWebhooks) + " times");
  }
  webhooks.push_back(std::move(target));
}

void takeCommand(Options& options, const std::string& text) {
  std::vector<std::string> words = wordsOf(text);
  if (words.empty() || !std::filesystem::u8path(words.front()).is_absolute()) {
    throw ValueError("does not begin with the absolute path of a program");
  }
  options.notifications.command = std::move(words);
}

void takeSeverity(Options& options, const std::string& text) {
  if (text != "info" && text != "warning" && text != "unknown" && text != "critical") {
    throw ValueError("is not info, warning, unknown or critical");
  }
  options.notifications.leastSeverity = text;
}

Option row(const std::string& name, const std::string& argument, const std::string& help,
           void (*take)(Options&, const std::string&)) {
  Option option;
  option.name = name;
  option.argument = argument;
  option.help = help;
  option.group = OptionGroup::kNotifications;
  option.take = take;
  return option;
}

}  // namespace

std::vector<Option> notificationOptions() {
  Option webhook =
      row("webhook", "URL secret=FILE [ca=FILE]",
          "where each alarm is posted to, by https, or by http to the loopback; signed with what the "
          "file 'secret' holds; 'ca' is PEM, trusted instead of the system's authorities",
          takeWebhook);
  webhook.mayRepeat = true;
  const Option command =
      row("notify-command", "PROGRAM [WORD ...]",
          "what is run for each alarm, without a shell; it finds the alarm on its input", takeCommand);
  Option severity = row("notify-severity", "WORD", "how bad an alarm is at least that is told", takeSeverity);
  severity.range = "info, warning, unknown or critical";
  severity.defaultText = NotificationTargets().leastSeverity;
  return {webhook, command, severity};
}

}  // namespace host
