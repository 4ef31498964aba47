#include "system/report.h"

#include <iostream>
#include <mutex>
#include <utility>

namespace host {

namespace {

std::mutex mutex;

LineReceiver& receiver() {
  static LineReceiver receiver;
  return receiver;
}

void writeLine(std::ostream& out, const std::string& line) {
  const std::string whole = line + '\n';  // at once, so that lines of other writers stand ahead or behind
  out.write(whole.data(), static_cast<std::streamsize>(whole.size())).flush();
}

void tell(LineKind kind, std::ostream& out, const std::string& lead, const std::string& line) {
  const std::lock_guard<std::mutex> lock(mutex);
  writeLine(out, lead + line);
  if (receiver()) receiver()(kind, line);
}

}  // namespace

void tellLinesTo(LineReceiver taker) {
  const std::lock_guard<std::mutex> lock(mutex);
  receiver() = std::move(taker);
}

void announce(const std::string& line) { tell(LineKind::kAnnouncement, std::cout, "", line); }

void report(const std::string& line) { tell(LineKind::kReport, std::cerr, "mirn-host: ", line); }

void writeToErrors(const std::string& line) { tell(LineKind::kLog, std::cerr, "", line); }

}  // namespace host
