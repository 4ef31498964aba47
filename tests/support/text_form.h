#ifndef MIRN_TESTS_SUPPORT_TEXT_FORM_H
#define MIRN_TESTS_SUPPORT_TEXT_FORM_H

#include <string>

#include "ServiceObject.h"
#include "text.h"

/// A value as one line, such as `{state: "NORMAL", disks: ["21"]}`, so that values are compared and shown.
inline std::string textForm(const ovra::data_transfer::ServiceObject& value) {
  if (value.isNull()) return "null";
  if (!value.isObject() && !value.isArray()) {
    const std::string text = wideToUtf8(value.toString());
    return value.which() == 5 ? '"' + text + '"' : text;
  }
  std::string list;
  for (auto child = value.begin(); child != value.end(); ++child) {
    if (!list.empty()) list += ", ";
    if (value.isObject()) list += wideToUtf8((*child).key) + ": ";
    list += textForm(*(*child).value);
  }
  return value.isObject() ? '{' + list + '}' : '[' + list + ']';
}

#endif
