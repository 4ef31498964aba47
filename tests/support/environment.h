#ifndef MIRN_TESTS_SUPPORT_ENVIRONMENT_H
#define MIRN_TESTS_SUPPORT_ENVIRONMENT_H

#include <string>

/// Changes the environment of this process, for all that read it from now on. Not safe beside
/// threads that do.
void setVariable(const std::string& name, const std::string& value);
void unsetVariable(const std::string& name);

/// Has the variable TZ looked at again.
void applyTimeZone();

#endif
