#include "bundle/mask.h"

#include <algorithm>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <cctype>
#include <cstdint>

#include "identity/secrets.h"
#include "text.h"
#include "view/machine_view.h"

namespace host {

namespace {

// Shorter ones are masked only where they are told as such: elsewhere they may be any word.
constexpr std::size_t kShortestWord = 4;
// From here on it is nothing else even amid a word.
constexpr std::size_t kShortestPart = 8;
// Of an id that stands in a member of that meaning; those of the picture are known, however long.
constexpr std::size_t kShortestId = 10;

constexpr std::size_t kIdDigits = 16;      // hexadecimal: 64 bits, as an id has
constexpr std::size_t kSerialDigits = 15;  // what a serial number has place for, with the letter

bool isDigit(char each) { return each >= '0' && each <= '9'; }

bool isWord(char each) {
  return std::isalnum(static_cast<unsigned char>(each)) != 0 || static_cast<unsigned char>(each) >= 0x80;
}

bool areDigits(const std::string& text) {
  return !text.empty() && std::all_of(text.begin(), text.end(), isDigit);
}

std::size_t beginningOf(char first, char second) {
  return static_cast<std::size_t>(static_cast<unsigned char>(first)) << 8U |
         static_cast<unsigned char>(second);
}

/// As it stands within quotes.
std::string withinQuotes(const std::string& text) {
  const std::string quoted = boost::json::serialize(boost::json::string(text));
  return quoted.substr(1, quoted.size() - 2);
}

bool endsWith(std::string_view text, std::string_view end) {
  return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// Whether a member's name says that it is an id of an object: "volumeId", "objectID", "controllerIds".
bool isIdMember(std::string_view name) {
  return name == "id" || endsWith(name, "Id") || endsWith(name, "ID") || endsWith(name, "Ids");
}

std::string textOf(const boost::json::object& object, std::string_view name) {
  const auto* const member = object.if_contains(name);
  return member == nullptr || !member->is_string() ? std::string() : std::string(member->get_string());
}

/// Behind the quote at `begin`, to its end; with the escapes.
std::string_view quotedAt(std::string_view json, std::size_t begin) {
  std::size_t end = begin + 1;
  while (end < json.size() && json[end] != '"') end += json[end] == '\\' ? 2 : 1;
  return json.substr(begin, end + 1 - begin);
}

/// The texts that stand behind `key`.
std::set<std::string> membersOf(std::string_view json, std::string_view key) {
  std::set<std::string> texts;
  for (std::size_t at = json.find(key); at != std::string_view::npos; at = json.find(key, at)) {
    at += key.size();
    if (at >= json.size() || json[at] != '"') continue;
    boost::system::error_code error;
    const auto value = boost::json::parse(std::string(quotedAt(json, at)), error);
    if (!error && value.is_string()) texts.emplace(value.get_string());
  }
  return texts;
}

}  // namespace

/// Finds what names objects in a value.
class Mask::Teacher {
 public:
  explicit Teacher(Mask& mask) : m_mask(mask) {}

  void teach(const boost::json::value& value) {
    if (value.is_object()) teach(value.get_object());
    if (!value.is_array()) return;
    for (const auto& each : value.get_array()) teach(each);
  }

 private:
  void teach(const boost::json::object& object) {
    if (textOf(object, "type") == "disk") m_mask.learnDisk(textOf(object, "name"));
    if (textOf(object, "event_source") == "DISK") m_mask.learnDisk(textOf(object, "event_source_name"));
    m_mask.learnSerialNumber(textOf(object, "serialNumber"));
    for (const auto& member : object) {
      if (isIdMember(member.key())) teachIds(member.value());
      teach(member.value());
    }
  }

  void teachIds(const boost::json::value& value) {
    if (value.is_array()) {
      for (const auto& each : value.get_array()) teachIds(each);
    }
    if (!value.is_string()) return;
    const std::string id(value.get_string());
    if (id.size() >= kShortestId && areDigits(id)) m_mask.learnId(id);
  }

  Mask& m_mask;
};

void Mask::learn(const insight::MachineView& machine) {
  const auto learnIds = [&](const auto& views) {
    for (const auto& each : views) learnId(wideToUtf8(each.id));
  };
  learnIds(machine.raids);
  learnIds(machine.controllers);
  learnIds(machine.arrays);
  learnIds(machine.disks);
  learnIds(machine.volumes);
  learnIds(machine.ports);
  for (const auto& port : machine.ports) {
    learnId(wideToUtf8(port.deviceId));
    learnId(wideToUtf8(port.connectedId));
  }
  for (const auto& disk : machine.disks) {
    learnDisk(wideToUtf8(disk.type) + ' ' + wideToUtf8(disk.serialNumber));
  }
}

void Mask::learn(const std::string& json) {
  boost::system::error_code error;
  const auto value = boost::json::parse(json, error);
  if (!error) Teacher(*this).teach(value);
}

/// End devices that are no disks have serial numbers, too.
void Mask::learnList(std::string_view json) {
  for (const std::string& serialNumber : membersOf(json, "\"serialNumber\":"))
    learnSerialNumber(serialNumber);
  for (const std::string& id : membersOf(json, "\"id\":")) learnId(id);
}

void Mask::learnSerialNumber(const std::string& serialNumber) {
  if (serialNumber.empty()) return;
  const std::string mask = maskOfSerialNumber(serialNumber);
  const std::string told = withinQuotes(serialNumber);
  learnText("\"serialNumber\":\"" + told + '"', "\"serialNumber\":\"" + mask + '"');
  if (serialNumber.size() >= kShortestWord) learnText(told, mask);
}

/// Disks are called by type and serial number.
void Mask::learnDisk(const std::string& name) {
  const std::size_t blank = name.find(' ');
  if (blank == std::string::npos) return learnSerialNumber(name);
  const std::string serialNumber = name.substr(blank + 1);
  if (serialNumber.empty()) return;
  learnSerialNumber(serialNumber);
  learnText(withinQuotes(name), withinQuotes(name.substr(0, blank + 1)) + maskOfSerialNumber(serialNumber));
}

void Mask::learnId(const std::string& id) {
  if (areDigits(id)) m_ids.emplace(id, maskOfId(id));
}

void Mask::learnText(const std::string& text, const std::string& instead) {
  if (!m_texts.emplace(text, instead).second) return;
  m_lengths.insert(text.size());
  m_beginnings.set(beginningOf(text[0], text[1]));
}

/// A hash whose own key and text nobody can take apart or go on from.
std::string Mask::digest(const std::string& kind, const std::string& text) const {
  return sha256Hex(m_key + sha256Hex(m_key + kind + ' ' + text));
}

std::string Mask::maskOfId(const std::string& id) const {
  return std::to_string(std::stoull(digest("id", id).substr(0, kIdDigits), nullptr, 16));
}

std::string Mask::maskOfSerialNumber(const std::string& serialNumber) const {
  std::string mask = "M" + digest("serial number", serialNumber).substr(0, kSerialDigits);
  std::transform(mask.begin(), mask.end(), mask.begin(),
                 [](unsigned char each) { return static_cast<char>(std::toupper(each)); });
  return mask;
}

std::string Mask::masked(std::string_view bytes, bool isInQuotes) const {
  std::string made;
  made.reserve(bytes.size());
  for (std::size_t at = 0; at < bytes.size();) {
    if (const std::size_t count = isInQuotes || bytes[at] == '"' ? replaced(bytes, at, made) : 0) {
      at += count;
      continue;
    }
    const bool isEscape = bytes[at] == '\\' && at + 1 < bytes.size();
    if (bytes[at] == '"') isInQuotes = !isInQuotes;
    made.append(bytes.substr(at, isEscape ? 2 : 1));
    at += isEscape ? 2 : 1;
  }
  return made;
}

/// Puts what stands instead of the text at `at`, if there is one to be masked, behind `made`. How many bytes
/// that takes the place of.
std::size_t Mask::replaced(std::string_view bytes, std::size_t at, std::string& made) const {
  const bool isAtBegin = at == 0 || !isWord(bytes[at - 1]) || (at > 1 && bytes[at - 2] == '\\');
  if (at + 1 < bytes.size() && m_beginnings.test(beginningOf(bytes[at], bytes[at + 1]))) {
    for (const std::size_t length : m_lengths) {
      if (at + length > bytes.size()) continue;
      const std::string text(bytes.substr(at, length));
      const auto found = m_texts.find(text);
      if (found == m_texts.end()) continue;
      const bool isAtEnd = at + length == bytes.size() || !isWord(bytes[at + length]);
      const bool isAlone = (isAtBegin || !isWord(text.front())) && (isAtEnd || !isWord(text.back()));
      if (!isAlone && (length < kShortestPart || areDigits(text))) continue;
      made += found->second;
      return length;
    }
  }
  if (!isDigit(bytes[at]) || (at > 0 && isDigit(bytes[at - 1]))) return 0;
  const auto* const end = std::find_if_not(bytes.begin() + at, bytes.end(), isDigit);
  const std::string digits(bytes.begin() + at, end);
  const auto id = m_ids.find(digits);
  if (id == m_ids.end()) return 0;
  made += id->second;
  return digits.size();
}

}  // namespace host
