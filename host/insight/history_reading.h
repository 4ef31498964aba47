#ifndef MIRN_HOST_INSIGHT_HISTORY_READING_H
#define MIRN_HOST_INSIGHT_HISTORY_READING_H

#include <string>

#include "answers/answer.h"
#include "history/history.h"
#include "history/list_cursor.h"
#include "history/sqlite.h"

namespace host {

/// What `read` answers; what keeps it from reading as a `Refusal`: 503 where the file cannot be read now,
/// 400 for a foreign cursor.
template <class Read>
auto readingHistory(const Read& read) -> decltype(read()) {
  try {
    return read();
  } catch (const insight::BadCursor&) {
    throw Refusal(400, "The cursor is none that a page told");
  } catch (const insight::sql::Failure& failure) {
    throw Refusal(503, std::string("The history cannot be read now: ") + failure.what());
  }
}

/// Raises a `Refusal` 422 where none is kept.
inline void requireHistory(const insight::History& history) {
  if (!history.isKept()) throw Refusal(422, "No history is kept");
}

}  // namespace host

#endif
