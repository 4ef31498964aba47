#ifndef MIRN_HOST_ANSWERS_ENTITY_TAG_H
#define MIRN_HOST_ANSWERS_ENTITY_TAG_H

#include <string_view>

namespace host {

/// How two entity tags are compared (RFC 9110, 8.8.3.2): a weak one is like no other for `kStrong`.
enum class TagComparison { kStrong, kWeak };

/// Whether a list of entity tags, as If-Match and If-None-Match have it, names `tag`, a strong one with its
/// quotation marks. "*" names every tag. What is no tag names none.
bool namesTag(std::string_view list, std::string_view tag, TagComparison comparison);

/// The list is "*".
bool namesAnyTag(std::string_view list);

}  // namespace host

#endif
