#ifndef MIRN_TESTS_LISTENERS_LISTENER_REQUESTS_H
#define MIRN_TESTS_LISTENERS_LISTENER_REQUESTS_H

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

#include "http_method.h"
#include "listener_interface.h"
#include "route_table.h"
#include "support/body.h"
#include "support/fake_session.h"

/// Requests as tests put them, and their outcomes as tests read them.

/// One request. The path is relative to the listener's key: "7/rebuild".
struct Request {
  std::int32_t method = HttpMethod::kGet;
  std::string path = {};
  ServiceObject body = {};
  RequestParameters parameters = {};
};

/// The lines of a value on one line: `diskId = "41", usage = "SPARE"`; `null`; `[]`. Text stands in quotes,
/// a signed number behind "signed", an unsigned one bare.
std::string describe(const ServiceObject& value);

/// The described answer, or the class, error id and words of the exception.
std::string outcomeOf(IListener& listener, const Request& request);

/// A `ListenerException` as an outcome.
std::string refused(const std::string& errorId, const std::string& words);
/// A `RequestError` as an outcome.
std::string invalid(const std::string& report);
/// A `MirnException` as an outcome.
std::string failed(const std::string& errorId, const std::string& words);
/// An `HttpClientErrorException` as an outcome: there is no such route.
std::string notFound();

/// The forms of the objects as an outcome.
template <class Maker>
std::string forms(std::initializer_list<Maker> makers) {
  ServiceObject list = ServiceObject::array();
  std::size_t count = 0;
  for (const Maker& maker : makers) list.at(count++) = maker.make().toServiceObject();
  return describe(list);
}

/// A listener on the session, whatever its constructor takes of it.
template <class Listener>
std::unique_ptr<Listener> makeOn(FakeSession& session) {
  if constexpr (std::is_constructible_v<Listener, FakeSession*, FakeSession*>) {
    return std::make_unique<Listener>(&session, &session);
  } else if constexpr (std::is_constructible_v<Listener, FakeSession*>) {
    return std::make_unique<Listener>(&session);
  } else {
    return std::make_unique<Listener>();
  }
}

/// A fixture with the verbs of a client.
template <class Listener>
class ListenerTest : public testing::Test {
 protected:
  std::string get(const std::string& path, const RequestParameters& parameters = {}) {
    return ask({HttpMethod::kGet, path, {}, parameters});
  }
  std::string put(const std::string& path, const ServiceObject& body = {},
                  const RequestParameters& parameters = {}) {
    return ask({HttpMethod::kPut, path, body, parameters});
  }
  std::string post(const std::string& path, const ServiceObject& body = {},
                   const RequestParameters& parameters = {}) {
    return ask({HttpMethod::kPost, path, body, parameters});
  }
  std::string remove(const std::string& path, const ServiceObject& body = {},
                     const RequestParameters& parameters = {}) {
    return ask({HttpMethod::kDelete, path, body, parameters});
  }
  std::string ask(const Request& request) { return outcomeOf(*m_listener, request); }

  /// A refusal changes nothing.
  void expectRefused(const std::string& outcome, const std::string& errorId, const std::string& words) {
    EXPECT_EQ(outcome, refused(errorId, words));
    EXPECT_TRUE(m_session.actions.empty());
  }
  void expectInvalid(const std::string& outcome, const std::string& report) {
    EXPECT_EQ(outcome, invalid(report));
    EXPECT_TRUE(m_session.actions.empty());
  }

  FakeSession m_session;

 private:
  const std::unique_ptr<Listener> m_listener = makeOn<Listener>(m_session);
};

#endif
