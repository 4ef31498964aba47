#ifndef MIRN_HOST_CONFIGURATION_CONFIGURATION_FILE_H
#define MIRN_HOST_CONFIGURATION_CONFIGURATION_FILE_H

#include <istream>
#include <string>
#include <vector>

#include "configuration/setting.h"

namespace host {

/// The settings in a text of lines `KEY = VALUE`, where KEY is an option's name and VALUE goes from its first
/// character that is no blank to its last. Empty lines and those whose first character is '#' say nothing;
/// elsewhere '#' is a character as any. Raises `UsageError` with `name`, the line's number and the reason.
std::vector<Setting> readConfiguration(std::istream& text, const std::string& name);

/// Those in a file. Raises `UsageError` also when it cannot be read.
std::vector<Setting> readConfigurationFile(const std::string& path);

/// What stands in the file is `options`; a file that says nothing, with each option in a comment: what it is,
/// and its default.
std::string sampleConfiguration();

}  // namespace host

#endif
