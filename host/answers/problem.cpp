#include "answers/problem.h"

#include <algorithm>
#include <boost/beast/http/status.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <map>
#include <stdexcept>

#include "service_exceptions.h"
#include "text.h"

namespace host {

namespace {

using ovra::common::HttpClientErrorException;
using ovra::common::IErrorIdException;

constexpr unsigned kInternalServerError = 500;

unsigned statusOf(const std::string& errorId) {
  static const std::map<std::string, unsigned> kStatuses{
      {kErrorObjectNotFound, 404},     {kErrorInvalidParameter, 400},     {kErrorInvalidRaidLevel, 400},
      {kErrorNotSupported, 422},       {kErrorDiskInvalidState, 409},     {kErrorArrayInvalidState, 409},
      {kErrorVolumeInvalidState, 409}, {kErrorUnsupportedRaidLevel, 400}, {kErrorOffline, 503},
      {kErrorNotInitialized, 503},
  };
  const auto found = kStatuses.find(errorId);
  return found == kStatuses.end() ? kInternalServerError : found->second;
}

unsigned failureStatus(std::int32_t status) {
  return status >= 400 && status <= 599 ? static_cast<unsigned>(status) : kInternalServerError;
}

/// A failure's text ought to be UTF-8; when it is not, its ASCII characters still tell something.
std::string utf8Detail(std::string text) {
  try {
    utf8ToWide(text);
  } catch (const std::range_error&) {
    std::replace_if(
        text.begin(), text.end(), [](char character) { return static_cast<unsigned char>(character) > 0x7F; },
        '?');
  }
  return text;
}

std::string titleOf(unsigned status) {
  const auto reason = boost::beast::http::obsolete_reason(boost::beast::http::int_to_status(status));
  return std::string(reason);
}

}  // namespace

Problem problemOf(const std::exception& failure) {
  if (const auto* const known = dynamic_cast<const HttpClientErrorException*>(&failure)) {
    return {failureStatus(known->status), utf8Detail(failure.what()), {}};
  }
  if (const auto* const known = dynamic_cast<const IErrorIdException*>(&failure)) {
    const std::string errorId = known->getErrorId();
    return {statusOf(errorId), utf8Detail(failure.what()), errorId};
  }
  return {kInternalServerError, utf8Detail(failure.what()), {}};
}

std::string problemDocument(const Problem& problem) {
  // "about:blank": the status says what kind of problem it is, and the title is the status's own phrase.
  boost::json::object document{{"type", "about:blank"},
                               {"title", titleOf(problem.status)},
                               {"status", problem.status},
                               {"detail", problem.detail}};
  if (!problem.errorId.empty()) document["errorId"] = problem.errorId;
  return boost::json::serialize(document);
}

}  // namespace host
