#ifndef MIRN_CLI_ANSWERS_RECORD_H
#define MIRN_CLI_ANSWERS_RECORD_H

#include <boost/json/value.hpp>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace mirnctl {

/// The records of an answer: the elements of a list, the items of a page, or the answer itself.
boost::json::array recordsOf(const boost::json::value& answer);

/// The member of a record, nested ones by names with a dot between; null where it is not there.
const boost::json::value* memberOf(const boost::json::value& record, std::string_view name);
const boost::json::value* memberOf(const boost::json::object& record, std::string_view name);

/// The member as text in one line, empty where it is not there; the second one without what a terminal
/// would obey.
std::string textAt(const boost::json::value& record, std::string_view name);
std::string printableAt(const boost::json::value& record, std::string_view name);

/// What an entry of the history tells, in one line for people.
std::string wordsOfEntry(const boost::json::value& entry);

/// A value in one line: text as it is, everything else as JSON; empty for null.
std::string plainText(const boost::json::value& value);

/// A value for people: sizes with binary units, times in words, objects by their names, and lists, with
/// commas between.
std::string textForPeople(const boost::json::value& value, std::string_view unit);

/// The names of the leaves of a record, in their order.
std::vector<std::string> namesOf(const boost::json::value& record);

/// `bytes` with a binary unit, at most one digit behind the point: "1.8 TiB".
std::string withBinaryUnit(double bytes);

/// "2 h 5 min".
std::string durationText(std::int64_t seconds);

}  // namespace mirnctl

#endif
