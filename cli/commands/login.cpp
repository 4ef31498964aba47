#include "commands/login.h"

#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <optional>

#include "answers/record.h"
#include "destination/profile_file.h"
#include "document/schema.h"
#include "exit_status.h"
#include "wire/answers.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

constexpr char kTokensBeginning[] = "mirn_";
constexpr char kCodesBeginning[] = "#code=";
constexpr char kInterrupt = '\x03';

/// What is typed is not shown as long as this lives.
class HiddenTyping {
 public:
  explicit HiddenTyping(Terminal& terminal) : m_terminal(terminal) { show(false); }
  HiddenTyping(const HiddenTyping&) = delete;
  HiddenTyping& operator=(const HiddenTyping&) = delete;
  ~HiddenTyping() { show(true); }

 private:
  void show(bool isShown) const {
    if (m_terminal.asksPeople && m_terminal.showTyping != nullptr) m_terminal.showTyping(isShown);
  }

  Terminal& m_terminal;
};

std::string secretFrom(Terminal& terminal) {
  std::string secret;
  char c = 0;
  {
    const HiddenTyping hidden(terminal);
    if (terminal.asksPeople) terminal.err << "Token or sign-in code: " << std::flush;
    while (terminal.in.get(c) && c != '\n' && c != kInterrupt) {
      if (c != ' ' && c != '\r' && c != '\t') secret += c;
    }
  }
  if (terminal.asksPeople) terminal.err << std::endl;
  if (c == kInterrupt || secret.empty()) throw Failure(ExitStatus::kRefused, "no token was given");
  return secret;
}

const Operation& operationOf(const Start& start, const char* id) {
  const Operation* const operation = start.document.find(id);
  if (operation == nullptr) throw Failure(ExitStatus::kNotFound, "this service lets nobody sign in");
  return *operation;
}

/// The token of a session; none where the service knows no such code.
std::optional<std::string> sessionOf(const Start& start, const Destination& destination,
                                     const std::string& code) {
  Request request{"POST", operationOf(start, "beginSession").path};
  request.body = json::serialize(json::object{{"code", code}});
  const Reply reply = start.makeService(destination, kPatience)->ask(request);
  if (reply.status == 401) return {};
  const json::value session = answerOf(reply);
  return textAt(session, "token");
}

/// The address that the host prints has the code at its end.
std::string codeIn(const std::string& secret) {
  const std::size_t beginning = secret.find(kCodesBeginning);
  return beginning == std::string::npos ? std::string()
                                        : secret.substr(beginning + sizeof kCodesBeginning - 1);
}

std::string tokenFrom(const Start& start, const Destination& destination, const std::string& secret) {
  if (secret.compare(0, sizeof kTokensBeginning - 1, kTokensBeginning) == 0) return secret;
  const std::string code = codeIn(secret);
  const std::optional<std::string> token = sessionOf(start, destination, code.empty() ? secret : code);
  if (!token && !code.empty()) {
    throw Failure(ExitStatus::kUnauthorised, "the service does not take this code",
                  "a code is good once, and for ten minutes");
  }
  return token.value_or(secret);
}

}  // namespace

void logIn(const Start& start) {
  if (!start.directions.tokenFile.empty()) {
    throw Failure(ExitStatus::kUsage, "login takes no --token-file", "the token comes from its input");
  }
  Destination destination = destinationWithoutToken(start.directions, start.surroundings);
  if (!destination.socketPath.empty()) {
    throw Failure(ExitStatus::kUsage, destination.url() + " takes no token", "say --host http://HOST:PORT");
  }
  const std::string name = start.directions.profile.empty() ? kUsualProfile : start.directions.profile;
  requireProfileName(name);
  destination.token = tokenFrom(start, destination, secretFrom(start.terminal));
  const json::value who =
      get(*start.makeService(destination, kPatience), operationOf(start, "getSession").path);
  std::map<std::string, std::string> values{{"host", destination.url()}};
  if (!destination.caFile.empty()) values["ca-file"] = destination.caFile;
  saveProfile(start.surroundings.configuration, name, destination.token, values);
  start.terminal.out << "Signed in at " << destination.url() << " as " << printableAt(who, "name")
                     << ", who may " << printableAt(who, "role") << "; this is the profile " << name
                     << " now.\n"
                     << std::flush;
}

}  // namespace mirnctl
