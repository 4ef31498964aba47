#include <cstdlib>
#include <ctime>

#include "support/environment.h"

void setVariable(const std::string& name, const std::string& value) {
  ::setenv(name.c_str(), value.c_str(), 1);
}

void unsetVariable(const std::string& name) { ::unsetenv(name.c_str()); }

void applyTimeZone() { ::tzset(); }
