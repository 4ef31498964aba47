#include "wire/answers.h"

#include <boost/json/parse.hpp>

#include "answers/record.h"
#include "answers/text_width.h"
#include "document/schema.h"
#include "exit_status.h"
#include "wire/encoding.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

constexpr int kPageLimit = 1000;

std::string adviceFor(unsigned status) {
  switch (status) {
    case 401:
      return "say where the token is: --token-file, MIRN_TOKEN_FILE or a profile";
    case 403:
      return "another token may have the role that this takes";
    case 412:
      return "look again, and repeat it if it still fits";
    case 503:
      return "try again in a while";
    default:
      return {};
  }
}

[[noreturn]] void fail(const Reply& reply) {
  boost::system::error_code error;
  const json::value body = json::parse(reply.body, error);
  const json::object problem = !error && body.is_object() ? body.get_object() : json::object();
  std::string text = textOf(problem, "detail");
  if (text.empty()) text = textOf(problem, "title");
  if (text.empty()) text = "the service answered with status " + std::to_string(reply.status);
  const std::string id = textOf(problem, "errorId");
  throw Failure(exitStatusOf(reply.status), printable(id.empty() ? text : id + ": " + text),
                adviceFor(reply.status));
}

}  // namespace

json::value answerOf(const Reply& reply) {
  if (reply.status < 200 || reply.status >= 300) fail(reply);
  if (reply.body.empty()) return nullptr;
  boost::system::error_code error;
  json::value body = json::parse(reply.body, error);
  if (error) throw Failure(ExitStatus::kInternal, "the service's answer is no JSON: " + error.message());
  return body;
}

json::value get(IService& service, const std::string& target) {
  return answerOf(service.ask({"GET", target}));
}

json::array allRecords(IService& service, const Operation& operation) {
  if (!operation.answersPage) return recordsOf(get(service, operation.path));
  json::array all;
  std::string cursor;
  do {
    std::string target = operation.path + "?limit=" + std::to_string(kPageLimit);
    if (!cursor.empty()) target += "&cursor=" + percentEncoded(cursor);
    const json::value page = get(service, target);
    for (json::value& record : recordsOf(page)) all.push_back(std::move(record));
    cursor = page.is_object() ? textOf(page.get_object(), "next") : std::string();
  } while (!cursor.empty());
  return all;
}

}  // namespace mirnctl
