#ifndef MIRN_TESTS_LISTENERS_ORDER_OF_CHECKS_H
#define MIRN_TESTS_LISTENERS_ORDER_OF_CHECKS_H

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "listeners/listener_requests.h"

/// The checks of one handler, in their order, as a table: a request that passes, and the ways to spoil it.
/// The suite `OrderOfChecks` shows for each table that the request passes, that each fault alone gives its
/// words, and that of any two the earlier one is reported. No refusal acts.

/// A picture of the system and a request to it.
struct Situation {
  FakeSession session;
  Request request;
};

struct Fault {
  std::string name;
  std::function<void(Situation&)> spoil;
  std::string outcome;  ///< What the listener says of it.
};

struct Checks {
  std::string name;  ///< Of the handler.
  std::function<std::unique_ptr<IListener>(FakeSession&)> listener;
  std::function<void(Situation&)> arrange;  ///< Makes a request that passes.
  std::vector<Fault> faults;                ///< In the order of the checks.
  bool areOfOneField = false;               ///< A request has one of the faults at a time.
};

std::ostream& operator<<(std::ostream& stream, const Checks& checks);

/// The tables of this program. They are made when the program starts, whatever tests it runs.
std::vector<Checks>& allChecks();

class OrderOfChecks : public testing::TestWithParam<Checks> {};

/// The checks of a handler of `Listener`. The request gets the host's parameter, which passes always.
template <class Listener>
Checks checksOf(const std::string& name, void (*arrange)(FakeSession&), const Request& request,
                std::vector<Fault> faults) {
  allChecks().push_back({name, makeOn<Listener>,
                         [arrange, request](Situation& situation) {
                           arrange(situation.session);
                           situation.request = request;
                           situation.request.parameters[L"access_token"] = L"secret";
                         },
                         std::move(faults)});
  return allChecks().back();
}

/// The same, of faults that are values of one field.
inline Checks ofOneField(Checks checks) {
  checks.areOfOneField = true;
  return checks;
}

/// A fault of the query: a parameter that no route takes.
Fault unknownParameter();
/// Faults of the body: a field that no route takes, a field that spoils the shape, and one that a check of
/// the listener refuses.
Fault unknownField();
Fault invalidField(const std::string& name, const BodyField& field, const std::string& report);
Fault refusedField(const std::string& name, const BodyField& field, const std::string& errorId,
                   const std::string& words);
/// The body of a route that takes none.
Fault unexpectedBody();
/// A path to an object that is not there. `rest` follows the identifier: "/rebuild".
Fault unknownObject(const std::string& rest, const std::string& errorId, const std::string& words);

#endif
