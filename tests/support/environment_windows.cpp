#include <cstdlib>
#include <ctime>

#include "support/environment.h"

void setVariable(const std::string& name, const std::string& value) {
  ::_putenv_s(name.c_str(), value.c_str());
}

void unsetVariable(const std::string& name) { ::_putenv_s(name.c_str(), ""); }

void applyTimeZone() { ::_tzset(); }
