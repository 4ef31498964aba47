#ifndef MIRN_CLI_WIRE_ENCODING_H
#define MIRN_CLI_WIRE_ENCODING_H

#include <string>
#include <string_view>

namespace mirnctl {

/// For a segment of a path, or a parameter: all but unreserved characters.
std::string percentEncoded(std::string_view text);

/// Its reverse; a sign without two digits behind it stays.
std::string percentDecoded(std::string_view text);

}  // namespace mirnctl

#endif
