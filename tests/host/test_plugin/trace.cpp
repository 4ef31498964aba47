#include "host/test_plugin/trace.h"

#include <cstdlib>
#include <fstream>

std::string setting(const char* name) {
  const char* const value = std::getenv(name);
  return value ? value : "";
}

void trace(const std::string& line) {
  const std::string path = setting("TEST_PLUGIN_TRACE");
  if (!path.empty()) std::ofstream(path, std::ios::app) << line << '\n';
}
