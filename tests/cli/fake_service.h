#ifndef MIRN_TESTS_CLI_FAKE_SERVICE_H
#define MIRN_TESTS_CLI_FAKE_SERVICE_H

#include <deque>
#include <map>
#include <string>
#include <vector>

#include "wire/client.h"

/// Answers what it was told to, and remembers what it was asked.
class FakeService : public mirnctl::IService {
 public:
  /// "GET /api/v1/mirn/volumes": the last answer stays, those before it go.
  std::map<std::string, std::deque<mirnctl::Reply>> answers;
  std::vector<mirnctl::Request> asked;

  void answer(const std::string& what, const std::string& body, unsigned status = 200) {
    answers[what].push_back({status, {}, body});
  }

  mirnctl::Reply ask(const mirnctl::Request& request) override {
    asked.push_back(request);
    auto& waiting = answers[request.method + ' ' + request.target];
    if (waiting.empty())
      return {404, {}, R"({"title":"Not Found","detail":"nobody told about )" + request.target + "\"}"};
    const mirnctl::Reply reply = waiting.front();
    if (waiting.size() > 1) waiting.pop_front();
    return reply;
  }

  mirnctl::Reply follow(const mirnctl::Request& request,
                        const std::function<bool(std::string_view)>& take) override {
    mirnctl::Reply reply = ask(request);
    if (reply.status < 300) take(reply.body);
    return reply;
  }

  std::string lines() const {
    std::string lines;
    for (const mirnctl::Request& request : asked) lines += request.method + ' ' + request.target + '\n';
    return lines;
  }
};

#endif
