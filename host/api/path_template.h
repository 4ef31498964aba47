#ifndef MIRN_HOST_API_PATH_TEMPLATE_H
#define MIRN_HOST_API_PATH_TEMPLATE_H

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// A path with places for arguments, such as "api/v1/mirn/volumes/{volumeId}": a name in braces stands for
/// exactly one segment, and "{*}" at the end for any number of them, none included. Constant.
class PathTemplate {
 public:
  using Segments = std::vector<std::wstring>;

  explicit PathTemplate(std::wstring_view text);

  bool matches(const Segments& segments) const;

  /// What stands in the places of the names, by name, in segments that match.
  std::map<std::wstring, std::wstring> argumentsIn(const Segments& segments) const;

  bool operator==(const PathTemplate& other) const { return m_parts == other.m_parts; }

  /// Says more exactly what it is for, and goes ahead where both match: a text ahead of a name ahead of the
  /// rest, at the first place where they differ.
  bool operator<(const PathTemplate& other) const { return m_parts < other.m_parts; }

 private:
  enum class Kind { kText, kName, kRest };

  struct Part {
    Kind kind;
    std::wstring text;  ///< Of a name without its braces; empty for the rest.

    bool operator==(const Part& other) const;
    bool operator<(const Part& other) const;
  };

  static Part partOf(const std::wstring& segment);
  bool hasRest() const { return !m_parts.empty() && m_parts.back().kind == Kind::kRest; }

  std::vector<Part> m_parts;
};

}  // namespace host

#endif
