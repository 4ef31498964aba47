#include "host/service/output_reader.h"

#include <unistd.h>

#include <array>
#include <cerrno>
#include <sstream>

namespace host {

OutputReader::OutputReader(int descriptor) : m_descriptor(descriptor), m_thread([this] { readToEnd(); }) {}

OutputReader::~OutputReader() {
  m_thread.join();
  close(m_descriptor);
}

void OutputReader::readToEnd() {
  std::array<char, 4096> part{};
  for (;;) {
    const ssize_t count = read(m_descriptor, part.data(), part.size());
    if (count < 0 && errno == EINTR) continue;
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (count > 0) m_text.append(part.data(), static_cast<std::size_t>(count));
    m_ended = count <= 0;
    m_changed.notify_all();
    if (m_ended) return;
  }
}

std::optional<std::string> OutputReader::find(const std::string& start) const {
  std::istringstream lines(m_text.substr(0, m_text.rfind('\n') + 1));
  for (std::string line; std::getline(lines, line);) {
    if (line.compare(0, start.size(), start) == 0) return line.substr(start.size());
  }
  return {};
}

std::optional<std::string> OutputReader::awaitLine(const std::string& start) {
  std::unique_lock<std::mutex> lock(m_mutex);
  m_changed.wait(lock, [&] { return m_ended || find(start); });
  return find(start);
}

std::string OutputReader::all() {
  std::unique_lock<std::mutex> lock(m_mutex);
  m_changed.wait(lock, [this] { return m_ended; });
  return m_text;
}

}  // namespace host
