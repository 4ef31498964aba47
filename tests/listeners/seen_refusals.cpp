#include "listeners/seen_refusals.h"

#include <boost/regex.hpp>

#include "catalogue.h"
#include "mirn_exception.h"
#include "request_error.h"
#include "text.h"

namespace {

/// The row by which the listener takes the request; null where there is none.
const RouteRow* rowFor(const BaseListener& listener, const Request& request) {
  for (const RouteId route : listener.boundRoutes()) {
    const RouteRow& row = rowOf(route);
    if (row.method != request.method) continue;
    if (boost::regex_match(utf8ToWide(request.path), boost::wregex(patternOf(row)))) return &row;
  }
  return nullptr;
}

/// What the validator says of a field; its words are made of the name of the field.
bool isReport(const std::exception& refusal) {
  return dynamic_cast<const ovra::request_validator::RequestError*>(&refusal) != nullptr &&
         std::string(refusal.what()).rfind("Argument", 0) == 0;
}

}  // namespace

std::set<SeenRefusal>& seenRefusals() {
  static std::set<SeenRefusal> seen;
  return seen;
}

bool isInRow(const RouteRow& row, const std::string& errorId, const std::string& words) {
  return std::any_of(row.refusals.begin(), row.refusals.end(), [&](const RefusalRow& refusal) {
    return refusal.errorId == errorId && wideToUtf8(refusal.words) == words;
  });
}

void noteRefusal(const IListener& listener, const Request& request, const std::exception& refusal) {
  const auto* const routed = dynamic_cast<const BaseListener*>(&listener);
  const auto* const withId = dynamic_cast<const ovra::common::IErrorIdException*>(&refusal);
  const RouteRow* const row = routed ? rowFor(*routed, request) : nullptr;
  if (!row || !withId || isReport(refusal)) return;
  seenRefusals().emplace(row->route, withId->getErrorId(), refusal.what());
  // What a played session raises may be anything, and switches and spares report it under their own class.
  if (dynamic_cast<const MirnException*>(&refusal) || refusal.what() == std::string("Refused")) return;
  EXPECT_TRUE(isInRow(*row, withId->getErrorId(), refusal.what()))
      << wideToUtf8(row->id) << " lacks the refusal " << withId->getErrorId() << ": " << refusal.what();
}
