#ifndef MIRN_LOGGING_EXPRESSIBLE_H
#define MIRN_LOGGING_EXPRESSIBLE_H

#include <ostream>
#include <string>

namespace ovra {
namespace log {

/// Whether `line` comes out of `stream` as it is: no character refused, none replaced by a likeness ("EUR").
/// A buffer that neither converts text itself nor hands it to the C library is taken to hold wide text.
bool canExpress(std::wostream& stream, const std::wstring& line);

}  // namespace log
}  // namespace ovra

#endif
