#ifndef MIRN_HOST_BUNDLE_WITHHELD_H
#define MIRN_HOST_BUNDLE_WITHHELD_H

#include <boost/json/array.hpp>
#include <string>
#include <vector>

namespace host {

/// What answers tell to clients and a bundle does not: where files of this machine are.

/// `body`, an answer of `operation`, without the members that are withheld, and with "..." for `folders`.
std::string withoutWithheld(const std::string& operation, std::string body,
                            const std::vector<std::string>& folders);

/// Which members those are, by operation.
boost::json::array withheldForm();

}  // namespace host

#endif
