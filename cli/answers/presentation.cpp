#include "answers/presentation.h"

#include <algorithm>
#include <boost/algorithm/string/join.hpp>
#include <boost/json/serialize.hpp>

#include "answers/record.h"
#include "answers/text_width.h"
#include "exit_status.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

using AnswerFields = std::vector<AnswerField>;

const AnswerField* fieldOf(const AnswerFields& fields, const std::string& name) {
  const auto found = std::find_if(fields.begin(), fields.end(),
                                  [&name](const AnswerField& field) { return field.name == name; });
  return found == fields.end() ? nullptr : &*found;
}

std::vector<std::string> allNames(const json::array& records, const Operation& operation) {
  std::vector<std::string> names;
  for (const AnswerField& field : operation.answer) names.push_back(field.name);
  for (const json::value& record : records) {
    for (const std::string& name : namesOf(record)) {
      const bool isKnown = std::any_of(names.begin(), names.end(), [&name](const std::string& known) {
        return name == known || name.compare(0, known.size() + 1, known + '.') == 0;
      });
      if (!isKnown) names.push_back(name);
    }
  }
  return names;
}

void require(const std::string& name, const json::array& records, const Operation& operation) {
  const std::vector<std::string> known = allNames(records, operation);
  if (std::find(known.begin(), known.end(), name) != known.end()) return;
  const bool isInside = std::any_of(records.begin(), records.end(), [&name](const json::value& record) {
    return memberOf(record, name) != nullptr;
  });
  if (isInside) return;
  throw Failure(ExitStatus::kUsage, "there is no column '" + name + "'",
                "there are " + boost::algorithm::join(known, ", "));
}

bool isDigits(const std::string& text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
}

/// Numbers as such, everything else as text.
bool isLess(const std::string& left, const std::string& right) {
  if (!isDigits(left) || !isDigits(right)) return left < right;
  return left.size() != right.size() ? left.size() < right.size() : left < right;
}

void sortRecords(json::array& records, const std::string& sortBy) {
  if (sortBy.empty()) return;
  const bool isDescending = sortBy.front() == '-';
  const std::string name = sortBy.substr(isDescending ? 1 : 0);
  std::stable_sort(records.begin(), records.end(), [&](const json::value& left, const json::value& right) {
    const std::string a = textAt(left, name);
    const std::string b = textAt(right, name);
    return isDescending ? isLess(b, a) : isLess(a, b);
  });
}

constexpr char kNothing[] = "-";

Cell cellOf(const json::value& record, const std::string& name, const AnswerFields& fields) {
  const json::value* const value = memberOf(record, name);
  if (value == nullptr) return {kNothing};
  const AnswerField* const field = fieldOf(fields, name);
  Cell cell{printable(textForPeople(*value, field == nullptr ? std::string() : field->unit))};
  if (value->is_string()) cell.colour = colourOf(plainText(*value));
  cell.isNumber = value->is_number() || (field != nullptr && !field->unit.empty());
  return cell;
}

/// "timeLeftSeconds", which is shown in words, as "timeLeft".
std::string withoutUnit(const std::string& name, const AnswerFields& fields) {
  constexpr std::string_view kUnit = "Seconds";
  const AnswerField* const field = fieldOf(fields, name);
  const bool isTime = field != nullptr && field->unit == "s" && name.size() > kUnit.size() &&
                      name.compare(name.size() - kUnit.size(), kUnit.size(), kUnit) == 0;
  return isTime ? name.substr(0, name.size() - kUnit.size()) : name;
}

/// "raidLevel" as "RAID LEVEL".
std::string headingOf(const std::string& name) {
  std::string heading;
  for (const char c : name) {
    const bool isUpper = c >= 'A' && c <= 'Z';
    const bool isLower = c >= 'a' && c <= 'z';
    if (isUpper && !heading.empty() && heading.back() != ' ') heading += ' ';
    if (c == '_' || c == '.') {
      heading += ' ';
    } else {
      heading += isLower ? static_cast<char>(c - 'a' + 'A') : c;
    }
  }
  return heading;
}

/// Without those that tell nothing of any record.
std::vector<std::string> tellingColumns(const json::array& records, const std::vector<std::string>& columns,
                                        const AnswerFields& fields) {
  std::vector<std::string> telling;
  for (const std::string& column : columns) {
    const bool tells = std::any_of(records.begin(), records.end(), [&](const json::value& record) {
      return cellOf(record, column, fields).text != kNothing;
    });
    if (tells) telling.push_back(column);
  }
  return telling.empty() ? columns : telling;
}

std::string tableOf(const json::array& records, const std::vector<std::string>& columns,
                    const AnswerFields& fields, const Screen& screen) {
  if (records.empty()) return "none\n";
  std::vector<std::string> headings;
  for (const std::string& column : columns) headings.push_back(headingOf(withoutUnit(column, fields)));
  std::vector<std::vector<Cell>> rows;
  for (const json::value& record : records) {
    rows.emplace_back();
    for (const std::string& column : columns) rows.back().push_back(cellOf(record, column, fields));
  }
  // Numbers stand on the right of the whole column.
  for (std::size_t column = 0; column < columns.size(); ++column) {
    const auto isNumberIn = [column](const auto& row) { return row[column].isNumber; };
    const bool isNumber = std::any_of(rows.begin(), rows.end(), isNumberIn) &&
                          std::all_of(rows.begin(), rows.end(), [&](const auto& row) {
                            return isNumberIn(row) || row[column].text == kNothing;
                          });
    for (auto& row : rows) row[column].isNumber = isNumber;
  }
  return table(headings, rows, screen);
}

/// The sentences of a list one by one, everything else as a whole.
std::vector<Cell> cellsOf(const json::value& record, const std::string& name, const AnswerFields& fields) {
  const json::value* const value = memberOf(record, name);
  const bool isList = value != nullptr && value->is_array() && !value->get_array().empty();
  const auto isSentence = [](const json::value& each) {
    return each.is_string() && std::string_view(each.get_string()).find(' ') != std::string_view::npos;
  };
  if (!isList || !std::all_of(value->get_array().begin(), value->get_array().end(), isSentence))
    return {cellOf(record, name, fields)};
  std::vector<Cell> cells;
  for (const json::value& each : value->get_array()) cells.push_back({printable(plainText(each))});
  return cells;
}

/// A name and its value, which goes on below itself where the line is too short.
std::string factOf(const std::string& name, const std::vector<Cell>& cells, std::size_t nameWidth,
                   const Screen& screen) {
  constexpr std::size_t kNarrowestValue = 20;
  const std::size_t begin = nameWidth + 2;
  const std::size_t room = screen.width < begin + kNarrowestValue ? 0 : screen.width - begin;
  std::string text = name + std::string(begin - name.size(), ' ');
  bool isFirst = true;
  for (const Cell& cell : cells) {
    for (const std::string& line : wrapped(cell.text, room)) {
      text += (isFirst ? "" : std::string(begin, ' ')) + coloured(line, cell.colour, screen) + '\n';
      isFirst = false;
    }
  }
  return text;
}

/// The records within a record that have a table of their own; none: null.
const json::array* recordsWithin(const json::value& record, const AnswerField* field) {
  const json::value* const list = field == nullptr ? nullptr : memberOf(record, field->name);
  const bool isTable = list != nullptr && list->is_array() && !field->columns.empty();
  return isTable ? &list->get_array() : nullptr;
}

std::string factsOf(const json::value& record, const std::vector<std::string>& columns,
                    const AnswerFields& fields, const Screen& screen) {
  if (!record.is_object()) return printable(textForPeople(record, {})) + '\n';
  std::size_t width = 0;
  for (const std::string& column : columns) {
    if (recordsWithin(record, fieldOf(fields, column)) == nullptr)
      width = std::max(width, withoutUnit(column, fields).size());
  }
  std::string facts, tables;
  for (const std::string& column : columns) {
    const AnswerField* const field = fieldOf(fields, column);
    const json::array* const within = recordsWithin(record, field);
    if (within == nullptr) {
      facts += factOf(withoutUnit(column, fields), cellsOf(record, column, fields), width, screen);
    } else if (!within->empty()) {
      tables += '\n' + column + ":\n" +
                tableOf(*within, tellingColumns(*within, field->columns, field->parts), field->parts, screen);
    }
  }
  return facts + tables;
}

/// What is known of a record, without what it has not.
std::vector<std::string> presentNames(const json::value& record, std::vector<std::string> names) {
  const auto isAbsent = [&record](const std::string& name) { return memberOf(record, name) == nullptr; };
  if (record.is_object()) names.erase(std::remove_if(names.begin(), names.end(), isAbsent), names.end());
  return names;
}

std::string quoted(const std::string& text) {
  if (text.find_first_of("\",\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"') quoted += c;
    quoted += c;
  }
  return quoted + '"';
}

std::string csvOf(const json::array& records, const std::vector<std::string>& columns) {
  std::vector<std::string> cells;
  for (const std::string& column : columns) cells.push_back(quoted(column));
  std::string text = boost::algorithm::join(cells, ",") + "\r\n";
  for (const json::value& record : records) {
    cells.clear();
    for (const std::string& column : columns) cells.push_back(quoted(textAt(record, column)));
    text += boost::algorithm::join(cells, ",") + "\r\n";
  }
  return text;
}

/// With the columns that are asked for, and no others.
json::value reduced(const json::value& record, const std::vector<std::string>& columns) {
  if (columns.empty()) return record;
  json::object only;
  for (const std::string& column : columns) {
    const json::value* const value = memberOf(record, column);
    only[column] = value == nullptr ? json::value() : *value;
  }
  return only;
}

std::string linesOf(const json::array& records, const std::vector<std::string>& columns) {
  std::string text;
  for (const json::value& record : records) text += json::serialize(reduced(record, columns)) + '\n';
  return text;
}

}  // namespace

std::string shown(const json::value& answer, const Operation& operation, const Presentation& presentation) {
  json::array records = recordsOf(answer);
  std::vector<std::string> asked = presentation.columns;
  const std::string& sortBy = presentation.sortBy;
  if (!sortBy.empty()) asked.push_back(sortBy.substr(sortBy.front() == '-' ? 1 : 0));
  if (!records.empty()) {
    for (const std::string& column : asked) require(column, records, operation);
  }
  sortRecords(records, sortBy);
  const bool isList = operation.answersList || answer.is_array();
  const auto columns = [&](const std::vector<std::string>& usual) {
    if (!presentation.columns.empty()) return presentation.columns;
    return usual.empty() ? allNames(records, operation) : usual;
  };
  switch (presentation.format) {
    case Format::kJson: {
      if (!isList) return json::serialize(reduced(answer, presentation.columns)) + '\n';
      json::array all;
      for (const json::value& record : records) all.push_back(reduced(record, presentation.columns));
      return json::serialize(all) + '\n';
    }
    case Format::kJsonLines:
      return linesOf(records, presentation.columns);
    case Format::kCsv:
      return csvOf(records, columns({}));
    case Format::kTable:
      break;
  }
  const Screen& screen = presentation.screen;
  const bool isAsked = !presentation.columns.empty();
  if (isList) {
    const std::vector<std::string> all = columns(operation.columns);
    return tableOf(records, isAsked ? all : tellingColumns(records, all, operation.answer), operation.answer,
                   screen);
  }
  if (records.empty()) return {};
  const json::value& record = records.front();
  return factsOf(record, isAsked ? presentation.columns : presentNames(record, columns({})), operation.answer,
                 screen);
}

}  // namespace mirnctl
