#include "system/report.h"

#include <iostream>
#include <mutex>

namespace host {

namespace {

void writeLine(std::ostream& out, const std::string& line) {
  static std::mutex mutex;
  const std::lock_guard<std::mutex> lock(mutex);
  out << line << std::endl;
}

}  // namespace

void announce(const std::string& line) { writeLine(std::cout, line); }

void report(const std::string& line) { writeLine(std::cerr, "mirn-host: " + line); }

}  // namespace host
