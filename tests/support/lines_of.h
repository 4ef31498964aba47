#ifndef MIRN_TESTS_SUPPORT_LINES_OF_H
#define MIRN_TESTS_SUPPORT_LINES_OF_H

#include <cstddef>
#include <string>
#include <vector>

#include "ServiceObject.h"
#include "text.h"

/// A value as lines, one a leaf in walking order, so that a test compares keys, types and values all at once:
///
///     id = "7"            text            numDisks = 3        unsigned number
///     initialized = true  boolean         offset = signed -3  signed number
///     verify.errors = 0   within a part   levels[0] = null    within an array
///     levels = []         empty array     sizes = {}          empty object
class LinesOf {
 public:
  using ServiceObject = ovra::data_transfer::ServiceObject;

  static std::vector<std::string> value(const ServiceObject& value) {
    LinesOf lines;
    lines.add("", value);
    return lines.m_lines;
  }

 private:
  void add(const std::string& path, const ServiceObject& value) {
    if (value.isArray() || value.isObject()) {
      addChildren(path, value);
    } else {
      addLeaf(path, leafText(value));
    }
  }

  void addChildren(const std::string& path, const ServiceObject& value) {
    if (value.begin() == value.end()) addLeaf(path, value.isArray() ? "[]" : "{}");
    std::size_t index = 0;
    const auto end = value.end();
    for (auto child = value.begin(); child != end; ++child) {
      const std::string key = wideToUtf8((*child).key);
      const std::string name =
          value.isArray() ? "[" + std::to_string(index++) + "]" : (path.empty() ? key : "." + key);
      add(path + name, *(*child).value);
    }
  }

  void addLeaf(const std::string& path, const std::string& text) {
    m_lines.push_back(path.empty() ? text : path + " = " + text);
  }

  static std::string leafText(const ServiceObject& value) {
    std::string text = wideToUtf8(value.toString());
    switch (value.which()) {
      case 0:
        return "null";
      case 1:
        return value.toBool() ? "true" : "false";
      case 2:
        return "signed " + text;
      case 3:
        return text;
      case 4:
        return "double " + text;
      default:
        return '"' + text + '"';
    }
  }

  std::vector<std::string> m_lines;
};

inline std::vector<std::string> linesOf(const ovra::data_transfer::ServiceObject& value) {
  return LinesOf::value(value);
}

#endif
