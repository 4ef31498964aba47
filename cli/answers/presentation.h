#ifndef MIRN_CLI_ANSWERS_PRESENTATION_H
#define MIRN_CLI_ANSWERS_PRESENTATION_H

#include <boost/json/value.hpp>
#include <string>
#include <vector>

#include "answers/table.h"
#include "document/operation.h"

namespace mirnctl {

enum class Format { kTable, kJson, kJsonLines, kCsv };

/// How an answer is to be shown. Plain value.
struct Presentation {
  Format format = Format::kTable;
  std::vector<std::string> columns;  ///< Empty: the operation's own.
  std::string sortBy;  ///< A column, with "-" in front for the largest first; empty: as it came.
  Screen screen;
};

/// The answer of an operation, with a line's end. A single record is shown as lines of name and value.
/// Raises `Failure` for a column that there is not.
std::string shown(const boost::json::value& answer, const Operation& operation,
                  const Presentation& presentation);

}  // namespace mirnctl

#endif
