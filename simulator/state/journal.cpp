#include "state/journal.h"

#include <boost/json.hpp>
#include <boost/uuid/detail/sha1.hpp>
#include <utility>

namespace simulator {
namespace {

constexpr std::string_view kMarkBegin = R"({"state":")";
constexpr std::string_view kMarkEnd = "\"}";

std::string markOf(const std::string& digest) {
  return std::string(kMarkBegin) + digest + std::string(kMarkEnd) + "\n";
}

bool isMark(std::string_view line) { return line.substr(0, kMarkBegin.size()) == kMarkBegin; }

bool isJson(std::string_view text) {
  boost::json::error_code error;
  boost::json::parse(text, error);
  return !error;
}

}  // namespace

std::string digestOf(std::string_view state) {
  constexpr char kDigits[] = "0123456789abcdef";
  boost::uuids::detail::sha1 hash;
  hash.process_bytes(state.data(), state.size());
  unsigned int words[5] = {};
  hash.get_digest(words);
  std::string digest;
  for (const unsigned int word : words) {
    for (int shift = 28; shift >= 0; shift -= 4) digest += kDigits[word >> shift & 0xFU];
  }
  return digest;
}

JournalText::JournalText(std::string text) : m_text(std::move(text)) {
  for (std::size_t begin = 0, end = 0; (end = m_text.find('\n', begin)) != std::string::npos;
       begin = end + 1) {
    m_lines.push_back({begin, end - begin});
    m_wholeSize = end + 1;
  }
  // A loss of power may leave a last line of the right length and without its content.
  if (m_wholeSize == m_text.size() && !m_lines.empty() && !isJson(line(m_lines.size()))) {
    m_wholeSize = m_lines.back().begin;
    m_lines.pop_back();
  }
}

std::string_view JournalText::line(std::size_t number) const {
  const Line& line = m_lines[number - 1];
  return std::string_view(m_text).substr(line.begin, line.size);
}

bool JournalText::holdsChanges() const {
  for (std::size_t number = 1; number <= m_lines.size(); ++number) {
    if (!isMark(line(number))) return true;
  }
  return false;
}

std::optional<std::vector<std::size_t>> JournalText::changesOf(const std::string& digest) const {
  std::optional<std::vector<std::size_t>> changes;
  const std::string mark = markOf(digest);
  for (std::size_t number = 1; number <= m_lines.size(); ++number) {
    if (mark == std::string(line(number)) + "\n") {
      changes.emplace();
    } else if (changes && !isMark(line(number))) {
      changes->push_back(number);
    }
  }
  return changes;
}

Journal::Journal(std::filesystem::path path, std::uint64_t wholeSize)
    : m_path(std::move(path)), m_size(wholeSize) {}

void Journal::add(const std::string& change, const std::string& digest) {
  append(m_size == 0 ? markOf(digest) + change : change);
}

void Journal::announce(const std::string& digest) {
  if (m_size > 0) append(markOf(digest));
}

void Journal::append(const std::string& text) {
  if (!m_file) m_file = std::make_unique<AppendFile>(m_path);
  if (m_mayBeTorn) m_file->cut(m_size);
  m_mayBeTorn = true;
  try {
    m_file->append(text);
  } catch (const std::runtime_error&) {
    // Gone at once, lest a start finds what was refused; if that fails, too, the next write tries again.
    try {
      m_file->cut(m_size);
      m_mayBeTorn = false;
    } catch (const std::runtime_error&) {
    }
    throw;
  }
  m_mayBeTorn = false;
  m_size += text.size();
}

void Journal::clear() {
  if (m_size == 0) return;
  try {
    if (!m_file) m_file = std::make_unique<AppendFile>(m_path);
    m_file->cut(0);
    m_size = 0;
  } catch (const std::runtime_error&) {
    m_mayBeTorn = true;
  }
}

void Journal::remove() {
  if (m_size > 0) return;
  m_file.reset();
  std::error_code ignored;
  std::filesystem::remove(m_path, ignored);
}

}  // namespace simulator
