#ifndef MIRN_SESSION_PLUGIN_LOG_LINE_H
#define MIRN_SESSION_PLUGIN_LOG_LINE_H

#include <string>

/// The plug-in's display name, in front of its failure lines.
extern const std::string kEventSourcePrefix;
extern const std::wstring kLogSeparator;

/// "%s: %s" of the display name and `text` (UTF-8).
std::wstring pluginLogLine(const std::string& text);
/// The same for a wide text.
std::wstring pluginLogLine(const std::wstring& text);

#endif
