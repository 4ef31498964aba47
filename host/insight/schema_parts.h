#ifndef MIRN_HOST_INSIGHT_SCHEMA_PARTS_H
#define MIRN_HOST_INSIGHT_SCHEMA_PARTS_H

#include <string>
#include <vector>

/// What the JSON Schemas of insight's answers have alike, as JSON text.

namespace host {

extern const std::vector<std::string> kObjectTypes;
extern const std::vector<std::string> kSeverityWords;

/// A JSON list of the words.
std::string wordList(const std::vector<std::string>& words);
/// One of these words.
std::string wordSchema(const std::vector<std::string>& words);

/// Of an object that has each of `members` and no other: what stands in its "properties", without the braces.
/// Raises `boost::system::system_error` on what is no JSON.
std::string recordSchema(const std::string& members);

std::string objectSchema();
std::string positionSchema();
std::string severitySchema();
std::string listSchema(const std::string& items, const std::string& description);
/// A list within an answer, and what a table of it has.
std::string tableSchema(const std::string& items, const std::string& description,
                        const std::vector<std::string>& columns);
/// A whole number of seconds, with `type` as JSON text.
std::string secondsSchema(const std::string& type, const std::string& description);
std::string momentSchema(const std::string& description);
/// What is null where there is none.
std::string maybeMomentSchema(const std::string& description);
/// Of a page's member "next".
std::string nextSchema();

}  // namespace host

#endif
