#include "controls/control_arguments.h"

#include <algorithm>
#include <limits>

#include "answers/answer.h"
#include "answers/json_writer.h"
#include "text.h"

namespace host {

namespace {

constexpr std::int32_t kBadRequest = 400;
constexpr int kUnsigned = 3;
constexpr int kText = 5;

[[noreturn]] void refuse(const std::wstring& name, const std::string& fault) {
  throw Refusal(kBadRequest, "The argument " + wideToUtf8(name) + ' ' + fault);
}

}  // namespace

ControlArguments::ControlArguments(const Value& body, const std::vector<std::wstring>& names) : m_body(body) {
  if (body.isNull()) return;
  if (!body.isObject()) throw Refusal(kBadRequest, "The body is not an object");
  for (const auto member : body) {
    if (std::find(names.begin(), names.end(), member.key) == names.end()) refuse(member.key, "is not known");
  }
}

std::string ControlArguments::text(const std::wstring& name) const {
  const Value& given = value(name);
  if (given.which() != kText) refuse(name, "is not a text");
  return wideToUtf8(given.toString());
}

std::string ControlArguments::text(const std::wstring& name, const std::string& fallback) const {
  return has(name) ? text(name) : fallback;
}

std::string ControlArguments::document(const std::wstring& name) const {
  const Value& given = value(name);
  if (!given.isObject()) refuse(name, "is not an object");
  return writeJson(given);
}

std::uint64_t ControlArguments::longNumber(const std::wstring& name) const {
  const Value& given = value(name);
  if (given.which() != kUnsigned || given.toInt64() < 0) refuse(name, "is not a number from 0 to 2^63-1");
  return static_cast<std::uint64_t>(given.toInt64());
}

std::uint64_t ControlArguments::longNumber(const std::wstring& name, std::uint64_t fallback) const {
  return has(name) ? longNumber(name) : fallback;
}

std::uint32_t ControlArguments::number(const std::wstring& name) const {
  const Value& given = value(name);
  const std::uint64_t number = given.which() == kUnsigned ? longNumber(name) : UINT64_MAX;
  if (number > std::numeric_limits<std::uint32_t>::max()) refuse(name, "is not a number from 0 to 2^32-1");
  return static_cast<std::uint32_t>(number);
}

std::uint32_t ControlArguments::number(const std::wstring& name, std::uint32_t fallback) const {
  return has(name) ? number(name) : fallback;
}

bool ControlArguments::has(const std::wstring& name) const {
  return m_body.isObject() && m_body.hasKey(name);
}

const ControlArguments::Value& ControlArguments::value(const std::wstring& name) const {
  if (!has(name)) refuse(name, "is missing");
  return m_body.member(name);
}

}  // namespace host
