#ifndef MIRN_INSIGHT_HISTORY_ENTRY_H
#define MIRN_INSIGHT_HISTORY_ENTRY_H

#include <boost/json/object.hpp>
#include <cstdint>
#include <optional>
#include <string>

#include "health/severity.h"
#include "view/object_ref.h"

namespace insight {

/// One thing that has happened. Plain value; texts are UTF-8 where they are narrow.
struct Entry {
  std::int64_t row = 0;  ///< Rises with every entry that is kept; 0 before that.
  std::string epoch;     ///< Whose number `sequence` is; together with the kind there is one of it.
  std::uint64_t sequence = 0;
  std::int64_t atMs = 0;  ///< Milliseconds since 1970, UTC.
  std::string kind;       ///< "event", "job", "alarm", "audit" or "service".
  Severity severity = Severity::kInfo;
  std::string actor;  ///< Who did it; empty where that is nobody that we know.
  ObjectRef object;
  std::string operation;     ///< What was done or has happened; for an alarm, the kind of its cause.
  std::string outcome;       ///< How it went; empty where that is no question.
  boost::json::object body;  ///< The rest, by kind.
};

/// Something that lasts, as the history keeps it: a job or an alarm. One with the same id and beginning takes
/// the place of an earlier one.
struct LastingRecord {
  std::string id;
  std::string kind;
  std::string objectId;
  std::int64_t fromMs = 0;
  std::optional<std::int64_t> toMs;  ///< Nothing for as long as it lasts.
  boost::json::object body;          ///< All of it.
};

/// For clients. What does not apply is null.
boost::json::object formOf(const Entry& entry);
/// The word's severity; nothing for another word.
std::optional<Severity> severityOf(const std::string& word);

}  // namespace insight

#endif
