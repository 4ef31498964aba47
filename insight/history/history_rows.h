#ifndef MIRN_INSIGHT_HISTORY_HISTORY_ROWS_H
#define MIRN_INSIGHT_HISTORY_HISTORY_ROWS_H

#include <string>

#include "history/entry.h"
#include "history/sqlite.h"

/// Entries and lasting records as rows of the history's tables.
namespace insight::rows {

/// Of the table `entry`, in the order in which entries are read; all but the first are written in it, too.
constexpr char kEntryColumns[] =
    "row, epoch, sequence, at_ms, kind, severity, actor, object_type, object_id, object_name, operation, "
    "outcome, body";
constexpr char kLastingColumns[] = "id, from_ms, to_ms, kind, object_id, body";

Entry entryAt(const sql::Statement& statement);
void bindEntry(sql::Statement& statement, const Entry& entry);

std::string kindOfLastingAt(const sql::Statement& statement);
LastingRecord lastingAt(const sql::Statement& statement);
void bindLasting(sql::Statement& statement, const LastingRecord& record);

}  // namespace insight::rows

#endif
