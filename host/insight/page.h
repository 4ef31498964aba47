#ifndef MIRN_HOST_INSIGHT_PAGE_H
#define MIRN_HOST_INSIGHT_PAGE_H

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "api/endpoint_document.h"

namespace host {

/// Which part of a list a client asks for, by the parameters "limit" and "cursor".
struct Page {
  std::size_t begin = 0;
  std::size_t limit = 0;

  /// The cursor of the page behind this one, of a list of so many; empty on the last.
  std::string next(std::size_t count) const;
};

/// How many a client asks for. Raises a `Refusal` 400 for a limit that is not from 1 to 1000.
std::size_t limitIn(const std::map<std::wstring, std::wstring>& parameters);

/// Raises a `Refusal` 400 for a limit that is not from 1 to 1000, and for a cursor that none of ours is.
Page pageIn(const std::map<std::wstring, std::wstring>& parameters);

/// As documents tell of the two parameters.
std::vector<DocumentedParameter> pageParameters();

}  // namespace host

#endif
