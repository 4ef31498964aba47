#include "bundle/withheld.h"

#include <boost/algorithm/string/replace.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>

namespace host {

namespace {

constexpr char kInstead[] = "...";
constexpr std::size_t kShortest = 2;  // the root is in every path

/// A member of an object that the answer has as a member.
struct Row {
  const char* operation;
  const char* object;
  const char* member;
};
constexpr Row kRows[] = {{"getService", "library", "path"}};

std::string without(const Row& row, std::string body) {
  boost::system::error_code error;
  boost::json::value value = boost::json::parse(body, error);
  if (error || !value.is_object()) return body;
  auto* const object = value.get_object().if_contains(row.object);
  if (object == nullptr || !object->is_object()) return body;
  object->get_object().erase(row.member);
  return boost::json::serialize(value);
}

/// As it stands within a text of JSON.
std::string withinText(const std::string& text) {
  const std::string quoted = boost::json::serialize(boost::json::string(text));
  return quoted.substr(1, quoted.size() - 2);
}

}  // namespace

std::string withoutWithheld(const std::string& operation, std::string body,
                            const std::vector<std::string>& folders) {
  for (const Row& row : kRows) {
    if (operation == row.operation) body = without(row, std::move(body));
  }
  for (const std::string& folder : folders) {
    if (folder.size() >= kShortest) boost::algorithm::replace_all(body, withinText(folder), kInstead);
  }
  return body;
}

boost::json::array withheldForm() {
  boost::json::array form;
  for (const Row& row : kRows) {
    form.push_back(boost::json::object{{"operation", row.operation},
                                       {"member", std::string(row.object) + '.' + row.member}});
  }
  return form;
}

}  // namespace host
