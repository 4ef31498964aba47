#ifndef MIRN_INSIGHT_HISTORY_HISTORY_QUERY_H
#define MIRN_INSIGHT_HISTORY_HISTORY_QUERY_H

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "history/entry.h"

namespace insight {

constexpr std::size_t kUsualPage = 100;
constexpr std::size_t kLargestPage = 1000;

/// What somebody wants to read of the history; all of it must hold. Empty texts ask for nothing.
struct HistoryQuery {
  std::optional<std::int64_t> fromMs;  ///< This moment or later.
  std::optional<std::int64_t> toMs;    ///< Before this one.
  std::string kind;
  std::optional<Severity> severity;
  std::string objectType;
  std::string objectId;
  std::string actor;
  std::string text;        ///< Part of a name, an operation, an outcome or the details.
  bool withAudit = false;  ///< Whether what clients did may be seen.
  std::size_t limit = kUsualPage;
  std::string cursor;  ///< `next` of the page before; empty for the newest.
};

/// Newest first. A page may be short, even empty, and have a next one: looking stops after a while.
struct HistoryPage {
  std::vector<Entry> items;
  std::string next;  ///< Empty when there is no more.
};

/// Which of the jobs or alarms that came to their end somebody wants to read.
struct EndedQuery {
  std::string kind;  ///< Empty for all.
  std::size_t limit = kUsualPage;
  std::string cursor;  ///< `next` of the page before; empty for those that ended last.
};

/// Those that ended last stand first. What ends meanwhile moves nothing from one page to another.
struct EndedPage {
  std::vector<LastingRecord> items;
  std::string next;  ///< Empty when there is no more.
};

/// What came to its end of late.
struct EndedLook {
  std::vector<LastingRecord> items;  ///< The last one first.
  std::int64_t fromMs = 0;           ///< Of what ended then or later none is missing; 0: nothing is.
};

}  // namespace insight

#endif
