#include "host/insight/resuming_ear.h"

#include <boost/json/parse.hpp>
#include <boost/json/value_to.hpp>
#include <map>
#include <sstream>
#include <stdexcept>

namespace host {

namespace {

void require(bool isSo, const std::string& words) {
  if (!isSo) throw std::runtime_error(words);
}

std::uint64_t numberAt(const boost::json::value& value, const char* name) {
  return value.at(name).to_number<std::uint64_t>();
}

}  // namespace

void ResumingEar::hear(const std::string& body) {
  std::size_t begin = 0;
  for (std::size_t end = 0; (end = body.find("\n\n", begin)) != std::string::npos; begin = end + 2) {
    hearEvent(body.substr(begin, end - begin));
  }
}

void ResumingEar::hearEvent(const std::string& lines) {
  std::map<std::string, std::string> fields;
  std::istringstream stream(lines);
  for (std::string line; std::getline(stream, line);) {
    const std::size_t colon = line.find(": ");
    require(colon != std::string::npos, "not a field: " + line);
    fields[line.substr(0, colon)] = line.substr(colon + 2);
  }
  const std::string& name = fields["event"];
  if (name == "gap") {
    hearGap(fields["data"]);
  } else if (fields.count("id") != 0) {
    hearEntry(fields["data"]);
  }
  if (name == "bye") ++m_farewells;
  const auto id = fields.find("id");
  require(id == fields.end() || id->second == lastId(), "after " + lastId() + " the id " + lines);
}

void ResumingEar::hearEntry(const std::string& data) {
  const boost::json::value entry = boost::json::parse(data);
  const std::uint64_t row = numberAt(entry, "row");
  require(row == m_row + 1, "after " + lastId() + " the entry " + data);
  require(numberAt(entry.at("details"), "number") == row, "not the entry that was told: " + data);
  m_row = row;
  ++m_entries;
}

void ResumingEar::hearGap(const std::string& data) {
  const boost::json::value gap = boost::json::parse(data);
  const std::uint64_t first = numberAt(gap, "first");
  const std::uint64_t last = numberAt(gap, "last");
  require(first == m_row + 1 && last >= first, "after " + lastId() + " the gap " + data);
  m_missing += last - m_row;
  m_row = last;
  ++m_gaps;
}

}  // namespace host
