#include "identity/token_lines.h"

#include <algorithm>
#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <map>
#include <set>

#include "identity/secrets.h"

namespace host {

namespace {

constexpr std::size_t kMaxLine = 512;
constexpr std::size_t kMaxName = 64;
constexpr std::size_t kWords = 4;
constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kHexDigits = "0123456789abcdef";
constexpr std::string_view kMarks = "-_.@";
constexpr std::string_view kTimeForm = "dddd-dd-ddTdd:dd:dd.dddZ";

bool isIn(std::string_view set, char character) { return set.find(character) != std::string_view::npos; }

bool isHash(std::string_view text) {
  return text.size() == kHashDigits && text.find_first_not_of(kHexDigits) == std::string_view::npos;
}

bool isTime(std::string_view text) {
  return text.size() == kTimeForm.size() &&
         std::equal(text.begin(), text.end(), kTimeForm.begin(),
                    [](char given, char form) { return form == 'd' ? isIn(kDigits, given) : given == form; });
}

/// Empty when `words` make an entry. Tells nothing of what they are: a token may have got in among them.
std::string faultOf(const std::vector<std::string>& words) {
  if (words.size() != kWords) return "it is not NAME ROLE SHA256 CREATED";
  if (!isTokenName(words[0]))
    return "the name is not 1 to 64 letters, digits, - _ . @, a letter or digit first";
  if (!roleOf(words[1])) return "the role is not observe, operate or administer";
  if (!isHash(words[2])) return "the hash is not 64 lower hexadecimal digits";
  if (!isTime(words[3])) return "the time is not of the form 2026-01-31T12:00:00.000Z";
  return {};
}

std::string textOf(const TokenEntry& entry) {
  return entry.name + ' ' + toText(entry.role) + ' ' + entry.hash + ' ' + entry.created;
}

}  // namespace

bool isTokenName(std::string_view name) {
  const auto isAllowed = [](char character) {
    return isIn(kLetters, character) || isIn(kDigits, character) || isIn(kMarks, character);
  };
  return !name.empty() && name.size() <= kMaxName && !isIn(kMarks, name.front()) &&
         std::all_of(name.begin(), name.end(), isAllowed);
}

TokenLines::Line TokenLines::lineOf(std::string_view text) {
  Line line{std::string(text), {}, {}};
  if (text.empty() || text.front() == '#') return line;
  std::vector<std::string> words;
  if (text.size() <= kMaxLine) {
    boost::algorithm::split(words, text, boost::algorithm::is_any_of(" \t"), boost::token_compress_on);
  }
  line.fault = faultOf(words);
  if (line.fault.empty()) line.entry = TokenEntry{words[0], *roleOf(words[1]), words[2], words[3]};
  return line;
}

TokenLines::TokenLines(std::string_view text) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    while (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    m_lines.push_back(lineOf(line));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  judgeRepetitions();
}

void TokenLines::judgeRepetitions() {
  std::map<std::string, std::size_t> seen;  // the line of each name and each hash
  for (std::size_t i = 0; i < m_lines.size(); ++i) {
    Line& line = m_lines[i];
    if (!line.entry) continue;
    for (const auto& [word, what] :
         {std::pair(line.entry->name, "name"), std::pair(line.entry->hash, "token")}) {
      const auto [found, isNew] = seen.emplace(std::string(what) + ' ' + word, i);
      if (!isNew && found->second != i && line.fault.empty()) {
        line.fault =
            "the " + std::string(what) + " stands in line " + std::to_string(found->second + 1) + " already";
      }
    }
  }
}

std::vector<TokenEntry> TokenLines::entries() const {
  std::vector<TokenEntry> entries;
  for (const Line& line : m_lines) {
    if (line.entry && line.fault.empty()) entries.push_back(*line.entry);
  }
  return entries;
}

std::vector<TokenFault> TokenLines::faults() const {
  std::vector<TokenFault> faults;
  for (std::size_t i = 0; i < m_lines.size(); ++i) {
    if (!m_lines[i].fault.empty()) faults.push_back({i + 1, m_lines[i].fault});
  }
  return faults;
}

std::optional<TokenEntry> TokenLines::find(std::string_view name) const {
  for (const TokenEntry& entry : entries()) {
    if (entry.name == name) return entry;
  }
  return {};
}

bool TokenLines::hasLineOf(std::string_view name) const {
  return std::any_of(m_lines.begin(), m_lines.end(),
                     [&](const Line& line) { return line.entry && line.entry->name == name; });
}

void TokenLines::add(const TokenEntry& entry) { m_lines.push_back(lineOf(textOf(entry))); }

bool TokenLines::remove(std::string_view name) {
  const auto found = find(name);
  std::set<std::string> goneNames{std::string(name)};
  std::set<std::string> goneHashes;
  if (found) goneHashes.insert(found->hash);
  const auto isGone = [&](const Line& line) {
    if (!line.entry) return false;
    const bool isRevoked = line.entry->name == name || (found && line.entry->hash == found->hash);
    const bool repeatsGone = goneNames.count(line.entry->name) + goneHashes.count(line.entry->hash) != 0;
    return isRevoked || (!line.fault.empty() && repeatsGone);
  };
  // A line that is refused for what it repeats would count once that has gone; others may repeat it in turn.
  for (auto line = std::find_if(m_lines.begin(), m_lines.end(), isGone); line != m_lines.end();
       line = std::find_if(m_lines.begin(), m_lines.end(), isGone)) {
    goneNames.insert(line->entry->name);
    goneHashes.insert(line->entry->hash);
    m_lines.erase(line);
  }
  return found.has_value();
}

std::string TokenLines::text() const {
  std::string text;
  for (const Line& line : m_lines) text += line.text + '\n';
  return text;
}

}  // namespace host
