#ifndef MIRN_INSIGHT_HEALTH_SEVERITY_H
#define MIRN_INSIGHT_HEALTH_SEVERITY_H

#include <string_view>

namespace insight {

/// How bad something is; a higher one is worse. What is not known is worse than a warning, since it may hide
/// anything, and no excuse for looking away from what is critical.
enum class Severity { kOk, kInfo, kWarning, kUnknown, kCritical };

/// "ok", "info", "warning", "unknown" or "critical".
constexpr std::string_view severityWord(Severity severity) {
  constexpr std::string_view kWords[] = {"ok", "info", "warning", "unknown", "critical"};
  return kWords[static_cast<int>(severity)];
}

}  // namespace insight

#endif
