#ifndef MIRN_HOST_API_API_PATH_H
#define MIRN_HOST_API_API_PATH_H

#include <string>

#include "plugin_interface.h"

namespace host {

/// The first segment of everything that takes a token; the plug-in's word for its version is the second.
constexpr wchar_t kApiSegment[] = L"api";
constexpr std::ptrdiff_t kApiSegmentCount = 2;

/// `path` below them, as a template; they alone when it is empty.
inline std::wstring apiPath(const ovra::plugin_interface& plugin, const std::wstring& path = {}) {
  const std::wstring root = kApiSegment + (L'/' + plugin.getApiVersion());
  return path.empty() ? root : root + L'/' + path;
}

}  // namespace host

#endif
