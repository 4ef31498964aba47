#ifndef MIRN_INSIGHT_HISTORY_HISTORY_TABLES_H
#define MIRN_INSIGHT_HISTORY_HISTORY_TABLES_H

#include "history/sqlite.h"

namespace insight {

/// Makes the tables, or brings those of an earlier version to this one: all of it or nothing. Raises
/// `sql::Failure` for a file that a later version has written.
void migrateHistory(sql::Database& database);

}  // namespace insight

#endif
