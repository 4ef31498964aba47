#include "system/report.h"

#include <iostream>
#include <mutex>

namespace host {

namespace {

void writeLine(std::ostream& out, const std::string& line) {
  static std::mutex mutex;
  const std::lock_guard<std::mutex> lock(mutex);
  const std::string whole = line + '\n';  // at once, so that lines of other writers stand ahead or behind
  out.write(whole.data(), static_cast<std::streamsize>(whole.size())).flush();
}

}  // namespace

void announce(const std::string& line) { writeLine(std::cout, line); }

void report(const std::string& line) { writeLine(std::cerr, "mirn-host: " + line); }

void writeToErrors(const std::string& line) { writeLine(std::cerr, line); }

}  // namespace host
