#include "answers/problem.h"

#include <algorithm>
#include <boost/beast/http/status.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <cstddef>
#include <stdexcept>
#include <utility>

#include "service_exceptions.h"
#include "text.h"

namespace host {

namespace {

using ovra::common::HttpClientErrorException;
using ovra::common::IErrorIdException;

constexpr unsigned kInternalServerError = 500;

constexpr std::size_t kLongestDetail = 4096;
constexpr char kCut[] = "...";

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

/// No longer than `kLongestDetail`, and still UTF-8.
std::string boundedDetail(std::string text) {
  text = utf8Detail(std::move(text));
  if (text.size() <= kLongestDetail) return text;
  std::size_t end = kLongestDetail - (sizeof(kCut) - 1);
  const auto isWithinCharacter = [&](std::size_t place) { return (text[place] & '\xC0') == '\x80'; };
  while (end > 0 && isWithinCharacter(end)) --end;
  return text.substr(0, end) + kCut;
}

std::string titleOf(unsigned status) {
  const auto reason = boost::beast::http::obsolete_reason(boost::beast::http::int_to_status(status));
  return std::string(reason);
}

}  // namespace

unsigned statusOf(RefusalKind kind) {
  switch (kind) {
    case RefusalKind::kRequest:
      return 400;
    case RefusalKind::kAbsent:
      return 404;
    case RefusalKind::kState:
      return 409;
    case RefusalKind::kUnsupported:
      return 422;
    case RefusalKind::kOffline:
      return 503;
    case RefusalKind::kFailure:
      break;
  }
  return kInternalServerError;
}

Problem problemOf(const std::exception& failure, const RefusalKinds& kinds) {
  const std::string words = failure.what();
  if (const auto* const known = dynamic_cast<const HttpClientErrorException*>(&failure)) {
    return {failureStatus(known->status), boundedDetail(words), {}};
  }
  if (const auto* const known = dynamic_cast<const IErrorIdException*>(&failure)) {
    const std::string errorId = known->getErrorId();
    return {statusOf(kinds.of(errorId, words)), boundedDetail(words), errorId};
  }
  return {kInternalServerError, boundedDetail(words), {}};
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
