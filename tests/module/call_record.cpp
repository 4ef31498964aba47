#include "module/call_record.h"

#include <algorithm>
#include <thread>

namespace {

constexpr char kOpens[] = "VexSessionOpen";
constexpr char kCloses[] = "VexSessionClose";
constexpr char kIndent[] = "  ";

/// The library counts its sessions: the next one is one more.
VEX_HANDLE newestSession() {
  VEX_HANDLE session = 0;
  VexSessionOpen(&session);
  VexSessionClose(session);
  return session;
}

std::string shownBytes(const std::string& bytes) {
  if (std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == 0; })) {
    return std::to_string(bytes.size()) + " x 00";
  }
  std::string hex;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    hex += {"0123456789abcdef"[value >> 4], "0123456789abcdef"[value & 0xF]};
  }
  return hex;
}

bool takesSession(const ScriptedCall& call) {
  if (call.operation == kCloses) return true;
  return call.kind == OperationKind::READING && call.operation != "VexGetSystemInfo";
}

/// The end of the calls that the one at `first` begins; `first` itself when no session is opened and closed
/// there, all on one thread.
template <class Line>
Line endOfSnapshot(Line first, Line end) {
  if (first->operation != kOpens) return first;
  const Line last = std::find_if(first, end, [](const auto& line) { return line.operation == kCloses; });
  const bool whole =
      last != end && std::all_of(first, last + 1, [&](const auto& line) { return line.mark == first->mark; });
  return whole ? last + 1 : first;
}

}  // namespace

void CallRecord::step(const std::string& heading, const std::function<std::string()>& act,
                      const std::string& leftOut) {
  m_session = newestSession();
  m_library.clearCalls();
  const std::string said = act();
  ScriptedCalls calls = m_library.takeCalls();
  calls.erase(std::remove_if(calls.begin(), calls.end(),
                             [&](const ScriptedCall& call) { return call.operation == leftOut; }),
              calls.end());
  write("\n## " + heading);
  if (!said.empty()) write(said);
  writeCalls(calls);
}

CallRecord::Line CallRecord::lineOf(const ScriptedCall& call) {
  if (call.operation == kOpens) ++m_session;
  std::string text = call.operation + '(';
  for (std::size_t place = 0; place < call.arguments.size(); ++place) {
    if (place > 0) text += ", ";
    text += argumentText(call, place);
  }
  return {call.thread == std::this_thread::get_id() ? "" : "event thread: ", text + ')', call.operation};
}

std::string CallRecord::argumentText(const ScriptedCall& call, std::size_t place) const {
  const ScriptedArgument& argument = call.arguments[place];
  if (place == 0 && takesSession(call) && argument.number == m_session) return "session";
  if (argument.text != "out" || argument.bytes.empty()) return argument.text;
  return "out{" + shownBytes(argument.bytes) + '}';
}

void CallRecord::writeCalls(const ScriptedCalls& calls) {
  Lines lines;
  for (const ScriptedCall& call : calls) lines.push_back(lineOf(call));
  if (lines.empty()) write(std::string(kIndent) + "no call");
  for (auto line = lines.cbegin(); line != lines.cend();) {
    const auto end = endOfSnapshot(line, lines.cend());
    if (end != line) {
      writeSnapshot(line, end);
      line = end;
    } else {
      write(kIndent + line->mark + line->text);
      ++line;
    }
  }
}

void CallRecord::writeSnapshot(Lines::const_iterator first, Lines::const_iterator end) {
  std::string calls;
  for (auto line = first; line != end; ++line) calls += std::string(kIndent) + kIndent + line->text + '\n';
  const auto [entry, isNew] = m_snapshots.emplace(calls, m_snapshots.size() + 1);
  write(kIndent + first->mark + "snapshot " + std::to_string(entry->second) + (isNew ? ":" : ""));
  if (isNew) m_text += calls;
}
