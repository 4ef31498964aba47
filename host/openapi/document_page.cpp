#include "openapi/document_page.h"

#include <boost/algorithm/string/case_conv.hpp>
#include <boost/json/array.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

#include "openapi/json_access.h"

namespace host {

namespace {

using boost::json::array;
using boost::json::object;
using boost::json::value;

/// Nothing of a text becomes markup.
std::string escaped(std::string_view text) {
  std::string safe;
  for (const char character : text) {
    switch (character) {
      case '&':
        safe += "&amp;";
        break;
      case '<':
        safe += "&lt;";
        break;
      case '>':
        safe += "&gt;";
        break;
      case '"':
        safe += "&quot;";
        break;
      default:
        safe += character;
    }
  }
  return safe;
}

std::string element(const std::string& name, const std::string& inner) {
  return '<' + name + '>' + inner + "</" + name + ">\n";
}

std::string textElement(const std::string& name, std::string_view text) {
  return element(name, escaped(text));
}

std::string heading(const std::string& level, const std::string& anchor, std::string_view text) {
  return '<' + level + " id=\"" + escaped(anchor) + "\">" + escaped(text) + "</" + level + ">\n";
}

std::string link(const std::string& anchor, std::string_view text) {
  return "<a href=\"#" + escaped(anchor) + "\">" + escaped(text) + "</a>";
}

/// The last name of a reference.
std::string referenced(const object& schema) {
  const std::string reference = textIn(schema, "$ref");
  return reference.substr(reference.rfind('/') + 1);
}

std::string typeText(const value& type) {
  return type.is_string() ? std::string(type.get_string()) : boost::json::serialize(type);
}

/// What kind of value a schema asks for, as HTML.
std::string kindOf(const object& schema) {
  if (schema.contains("$ref")) return link("schema-" + referenced(schema), referenced(schema));
  if (textIn(schema, "type") == "array") return "list of " + kindOf(objectIn(schema, "items"));
  std::string kind = schema.contains("type") ? escaped(typeText(schema.at("type"))) : std::string();
  for (const auto& word : listIn(schema, "enum")) kind += ' ' + element("code", escaped(typeText(word)));
  const std::string unit = textIn(objectIn(schema, "x-mirn"), "unit");
  return unit.empty() ? kind : kind + ", " + escaped(unit);
}

bool isListed(const array& list, std::string_view text) {
  for (const auto& listed : list) {
    if (listed.is_string() && listed.get_string() == text) return true;
  }
  return false;
}

std::string fieldRow(std::string_view name, std::string_view need, const object& schema,
                     std::string_view description) {
  return element("tr", element("td", textElement("code", name)) + textElement("td", need) +
                           element("td", kindOf(schema)) + textElement("td", description));
}

std::string table(const std::string& rows) { return rows.empty() ? rows : element("table", rows); }

/// The properties of a schema, those of its parts behind them.
std::string propertyRows(const object& schema, const std::string& prefix = {}) {
  std::string rows;
  for (const auto& member : objectIn(schema, "properties")) {
    const std::string name = prefix + std::string(member.key());
    const object& property = member.value().as_object();
    const bool isRequired = isListed(listIn(schema, "required"), member.key());
    rows += fieldRow(name, isRequired ? "required" : "optional", property, textIn(property, "description"));
    rows += propertyRows(property, name + '.') + propertyRows(objectIn(property, "items"), name + "[].");
  }
  return rows;
}

std::string parameterRows(const object& operation) {
  std::string rows;
  for (const auto& told : listIn(operation, "parameters")) {
    const object& parameter = told.as_object();
    const std::string need = isTrueIn(parameter, "required") ? "required" : "optional";
    rows += fieldRow(textIn(parameter, "name"), textIn(parameter, "in") + ", " + need,
                     objectIn(parameter, "schema"), textIn(parameter, "description"));
  }
  return rows;
}

const object& firstMedia(const object& content) {
  static const object kNone;
  return content.empty() ? kNone : content.begin()->value().as_object();
}

std::string examplesOf(const object& media) {
  std::string text;
  for (const auto& example : objectIn(media, "examples")) {
    const auto* const shown = example.value().as_object().if_contains("value");
    if (shown != nullptr) text += textElement("pre", boost::json::serialize(*shown));
  }
  return text;
}

std::string bodyPart(const object& operation) {
  const object& body = objectIn(operation, "requestBody");
  if (body.empty()) return {};
  const object& media = firstMedia(objectIn(body, "content"));
  return textElement("h4", "Body") + table(propertyRows(objectIn(media, "schema"))) + examplesOf(media);
}

/// Answers that many operations share are told once, behind the operations.
std::string answerPart(const object& operation) {
  std::string items;
  for (const auto& member : objectIn(operation, "responses")) {
    const object& response = member.value().as_object();
    const std::string status = escaped(member.key()) + ' ';
    if (response.contains("$ref")) {
      items += element("li", status + link("answer-" + referenced(response), referenced(response)));
      continue;
    }
    const object& media = firstMedia(objectIn(response, "content"));
    items += element("li", status + escaped(textIn(response, "description")) + ' ' +
                               kindOf(objectIn(media, "schema")) + examplesOf(media));
  }
  return textElement("h4", "Answers") + element("ul", items);
}

std::string traitsOf(const object& operation) {
  const object& told = objectIn(operation, "x-mirn");
  return textElement("p", textIn(told, "noun") + ' ' + textIn(told, "verb") + "; effect: " +
                              textIn(told, "effect") + "; role: " + textIn(told, "role") + '.');
}

std::string operationPart(const std::string& title, const object& operation) {
  return heading("h3", textIn(operation, "operationId"), title) +
         textElement("p", textIn(operation, "summary") + ' ' + textIn(operation, "description")) +
         traitsOf(operation) + table(parameterRows(operation)) + bodyPart(operation) + answerPart(operation);
}

/// All operations, and the list that leads to them.
struct OperationParts {
  std::string index;
  std::string parts;
};

OperationParts operationParts(const object& paths) {
  OperationParts all;
  for (const auto& path : paths) {
    for (const auto& method : path.value().as_object()) {
      const object& operation = method.value().as_object();
      const std::string title =
          boost::algorithm::to_upper_copy(std::string(method.key())) + ' ' + std::string(path.key());
      all.index += element(
          "li", link(textIn(operation, "operationId"), title) + ' ' + escaped(textIn(operation, "summary")));
      all.parts += operationPart(title, operation);
    }
  }
  return all;
}

std::string sharedAnswers(const object& responses) {
  std::string parts = textElement("h2", "Answers of many operations");
  for (const auto& member : responses) {
    parts += heading("h3", "answer-" + std::string(member.key()), member.key()) +
             textElement("p", textIn(member.value().as_object(), "description"));
  }
  return parts;
}

std::string schemaParts(const object& schemas) {
  std::string parts = textElement("h2", "Objects");
  for (const auto& member : schemas) {
    parts += heading("h3", "schema-" + std::string(member.key()), member.key()) +
             table(propertyRows(member.value().as_object()));
  }
  return parts;
}

}  // namespace

std::string documentPage(const object& document) {
  const object& info = objectIn(document, "info");
  const object& components = objectIn(document, "components");
  const OperationParts operations = operationParts(objectIn(document, "paths"));
  const std::string title = textIn(info, "title") + ' ' + textIn(info, "version");
  const std::string head = "<meta charset=\"utf-8\">\n" + textElement("title", title);
  const std::string body = textElement("h1", title) + textElement("p", textIn(info, "description")) +
                           element("p", "For programs: <a href=\"openapi.json\">openapi.json</a>.") +
                           element("ul", operations.index) + textElement("h2", "Operations") +
                           operations.parts + sharedAnswers(objectIn(components, "responses")) +
                           schemaParts(objectIn(components, "schemas"));
  return "<!DOCTYPE html>\n<html lang=\"en\">\n" + element("head", head) + element("body", body) +
         "</html>\n";
}

}  // namespace host
