#ifndef MIRN_HOST_API_REQUEST_TARGET_H
#define MIRN_HOST_API_REQUEST_TARGET_H

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// The target of a request line, split and decoded.
struct RequestTarget {
  std::vector<std::wstring> segments;               ///< Of the path, in order; empty for "/".
  std::map<std::wstring, std::wstring> parameters;  ///< Of the query.
};

/// What one target may hold.
struct TargetBounds {
  std::size_t segments;
  std::size_t parameters;
};

/// Splits `target` at its slashes, '?', '&' and first '=', and percent-decodes each part once, after
/// splitting. A parameter without '=' has the empty value; '+' stands for itself.
///
/// Raises a `Refusal` 400 on a target that is no absolute path, more segments or parameters than
/// `bounds` has, an empty segment (so also on a slash at the end), an encoded slash in the path, a parameter
/// name that is empty, repeated or holds a NUL character, an incomplete or wrong percent-encoding, and text
/// that is not UTF-8.
RequestTarget parseTarget(std::string_view target, const TargetBounds& bounds);

}  // namespace host

#endif
