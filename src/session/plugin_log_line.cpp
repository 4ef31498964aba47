#include "plugin_log_line.h"

#include "text.h"

const std::string kEventSourcePrefix = "Ordan (R) Mirn Plug-In";
const std::wstring kLogSeparator = L": ";

std::wstring pluginLogLine(const std::wstring& text) {
  return utf8ToWide(kEventSourcePrefix) + kLogSeparator + text;
}

std::wstring pluginLogLine(const std::string& text) { return pluginLogLine(utf8ToWide(text)); }
