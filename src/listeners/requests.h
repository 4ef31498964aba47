#ifndef MIRN_LISTENERS_REQUESTS_H
#define MIRN_LISTENERS_REQUESTS_H

#include <boost/lexical_cast.hpp>
#include <cstdint>
#include <string>
#include <vector>

#include "enumerations.h"
#include "listener_steps.h"
#include "request_keys.h"
#include "request_validator.h"
#include "route_row.h"
#include "route_table.h"
#include "ServiceObject.h"

/// How handlers judge the shape of a request, and read its fields afterwards.

using ovra::data_transfer::ServiceObject;
using Rule = ovra::request_validator::ValidatorRule;
using Rules = std::vector<Rule>;

Rule optionalUnsigned(const wchar_t* key);

/// Judges the shape of a request as the row of its route says: body and query, in the row's order.
void judge(const RouteRow& row, const RequestParameters& parameters, const ServiceObject& body);
/// Judges once more, with the fields alone whose conditions `body` meets.
void judgeChosenForm(const RouteRow& row, const ServiceObject& body);
void judgeBody(const ServiceObject& body, const Rules& rules);

/// A field of a judged body.
std::wstring textOf(const ServiceObject& body, const wchar_t* key);
/// The elements of a field, each in its text form; none when the field is not there.
std::vector<std::wstring> textsOf(const ServiceObject& body, const wchar_t* key);
/// What "state" of `body` switches to; "INVALID_PARAMETER" for a word that is no state.
EnableState requestedState(const ServiceObject& body);

/// A decimal number in the range of `Unsigned`, without a negative sign and not above the signed 64-bit
/// maximum; "INVALID_PARAMETER" with `message` for anything else.
template <class Unsigned>
Unsigned parseNumber(const std::wstring& text, const std::wstring& message) {
  std::int64_t judged = 0;
  Unsigned number = 0;
  const bool parsed = boost::conversion::try_lexical_convert(text, judged) && judged >= 0 &&
                      boost::conversion::try_lexical_convert(text, number);
  requireThat(parsed, kErrorInvalidParameter, message);
  return number;
}

/// The size of a request, as the client gave it.
std::uint64_t parseSize(const std::wstring& text, const std::wstring& message);

#endif
