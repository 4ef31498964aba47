#include "arguments/request_of.h"

#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/replace.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include "answers/record.h"
#include "exit_status.h"
#include "wire/encoding.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

/// With ids where objects are named; a list names several.
std::string withIds(const Field& field, const Arguments& arguments, ObjectNames& names) {
  const std::string& text = arguments.at(field.name);
  const std::string type = typeOf(field, arguments);
  if (type.empty() || (field.takesNull && text == "null")) return text;
  if (field.kind != ValueKind::kList) return names.idOf(type, text);
  std::vector<std::string> ids;
  for (const std::string& part : partsOf(text)) ids.push_back(names.idOf(type, part));
  return boost::algorithm::join(ids, ",");
}

}  // namespace

std::string typeOf(const Field& field, const Arguments& arguments) {
  const auto type = arguments.find("type");
  const bool isBesideType = field.place == Place::kPath && field.name == "id" && type != arguments.end();
  return isBesideType ? type->second : field.refersTo;
}

Request requestOf(const Operation& operation, const Arguments& arguments, ObjectNames& names) {
  Request request{operation.method, operation.path};
  json::object body;
  bool hasBody = false;
  std::string query;
  for (const Field& field : operation.fields) {
    hasBody = hasBody || field.place == Place::kBody;
    const auto argument = arguments.find(field.name);
    if (argument == arguments.end()) {
      if (field.isRequired)
        throw Failure(ExitStatus::kUsage, "'" + optionOf(field.name) + "' is missing", field.help);
      continue;
    }
    const json::value value = valueOf(field, withIds(field, arguments, names));
    switch (field.place) {
      case Place::kPath:
        boost::algorithm::replace_all(request.target, '{' + field.name + '}',
                                      percentEncoded(plainText(value)));
        break;
      case Place::kQuery:
        query +=
            (query.empty() ? '?' : '&') + percentEncoded(field.name) + '=' + percentEncoded(plainText(value));
        break;
      case Place::kBody:
        body[field.name] = value;
        break;
    }
  }
  request.target += query;
  if (hasBody) request.body = json::serialize(body);
  return request;
}

}  // namespace mirnctl
