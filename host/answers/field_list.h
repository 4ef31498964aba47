#ifndef MIRN_HOST_ANSWERS_FIELD_LIST_H
#define MIRN_HOST_ANSWERS_FIELD_LIST_H

#include <string_view>
#include <vector>

namespace host {

/// `text` without the blanks and tabs around it.
std::string_view trimmed(std::string_view text);

/// The parts of a header field's value between `separator`s that stand in no quoted text, without the blanks
/// around them; empty ones are left out.
std::vector<std::string_view> partsOf(std::string_view value, char separator);

}  // namespace host

#endif
