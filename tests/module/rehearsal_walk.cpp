#include "module/rehearsal_walk.h"

#include <stdexcept>

#include "support/text_form.h"

namespace {

constexpr unsigned long kStepsOnAMachine = 50;
constexpr unsigned long kStepsBetweenLists = 10;

std::string hexOf(const std::string& bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string hex;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    hex += {kDigits[value >> 4], kDigits[value & 0xF]};
  }
  return hex;
}

template <class Number>
std::string listOf(const std::vector<Number>& numbers) {
  std::string text;
  for (const Number number : numbers) text += (text.empty() ? "" : ", ") + std::to_string(number);
  return "[" + text + "]";
}

/// A recorded call in the words of `toldCall`.
std::string toldBy(const ScriptedCall& call) {
  std::vector<std::uint64_t> numbers;
  std::vector<VEX_HANDLE> handles;
  std::string record = "null";
  for (const ScriptedArgument& argument : call.arguments) {
    const char kind = argument.text.front();
    if (kind >= '0' && kind <= '9') numbers.push_back(argument.number);
    if (kind == '{' || kind == '"') record = '"' + hexOf(argument.bytes) + '"';
    if (!argument.handles.empty()) handles = argument.handles;
  }
  return "\"" + call.operation + "\" " + listOf(numbers) + " " + record + " " + listOf(handles);
}

/// The call that a plan tells of; nothing for a plan without one.
std::string toldCall(const ServiceObject& plan) {
  if (plan.member(L"operation").isNull()) return {};
  std::string text;
  for (const wchar_t* const key : {L"operation", L"arguments", L"record", L"handles"}) {
    text += (text.empty() ? "" : " ") + textForm(plan.member(key));
  }
  return text;
}

/// What one of a list of values comes to, in the words of `outcomeOf`.
std::string outcomeIn(const ServiceObject& answer) {
  if (answer.hasKey(L"plan")) return textForm(answer.member(L"plan"));
  const ServiceObject& refusal = answer.member(L"refusal");
  const auto text = [&](const wchar_t* key) { return wideToUtf8(refusal.member(key).toString()); };
  const std::map<std::string, std::string> classes = {
      {"request", "RequestError"}, {"listener", "ListenerException"}, {"plugin", "MirnException"}};
  const std::string told = text(L"class");
  const bool hasId = !refusal.member(L"errorId").isNull();
  const auto found = classes.find(told);
  return failureText(found == classes.end() ? told : found->second, hasId ? text(L"errorId") : "-",
                     text(L"message"));
}

/// As `outcomeOf`, with the classes that have no name of ours by the words of a list's answer.
std::string withClassOfAList(const std::string& outcome) {
  if (outcome.front() == '{') return outcome;
  for (const char* const ours : {"RequestError ", "ListenerException ", "MirnException "}) {
    if (outcome.rfind(ours, 0) == 0) return outcome;
  }
  const bool isHttp = outcome.find("HttpClientErrorException") != std::string::npos;
  return (isHttp ? "http" : "other") + outcome.substr(outcome.find(' '));
}

std::string described(const Request& request) {
  std::string text = wideToUtf8(request.path) + " method " + std::to_string(request.method);
  for (const std::wstring& segment : request.segments) text += " /" + wideToUtf8(segment);
  for (const auto& [key, value] : request.parameters) text += " ?" + wideToUtf8(key + L"=" + value);
  return text + " " + textForm(request.body);
}

bool isPlan(const std::string& outcome) { return outcome.front() == '{'; }

}  // namespace

RehearsalWalk::RehearsalWalk(const LoadedModule& module, std::uint32_t seed)
    : m_random(seed),
      m_served(module),
      m_rehearsed(m_served.as<ovra::rehearsed_plugin_1>()),
      m_told(m_served.as<ovra::described_plugin_1>()->describe()) {
  if (!m_rehearsed) throw std::logic_error("the plug-in cannot be rehearsed");
  m_served.start();
}

void RehearsalWalk::renewMachine() {
  m_library.setMachine(m_random.machine());
  if (m_served.outcomeOf(post(L"mirn", {L"rescan"})) != "null") throw std::logic_error("no rescan");
  m_library.clearCalls();
}

std::string RehearsalWalk::planFor(const Request& request) {
  return ::outcomeOf([&] {
    return m_rehearsed->rehearse(request.path, request.method, request.segments, request.parameters,
                                 request.body);
  });
}

std::string RehearsalWalk::judgeDeed(const Request& request, const std::string& plan) {
  const std::string before = m_settings.image();
  std::string call;
  if (isPlan(plan)) {
    call = toldCall(m_rehearsed->rehearse(request.path, request.method, request.segments, request.parameters,
                                          request.body));
  }
  if (!m_library.takeCalls().empty()) return "the rehearsal called the library";
  if (m_settings.image() != before) return "the rehearsal stored a setting";

  const std::string outcome = m_served.outcomeOf(request);
  const ScriptedCalls calls = m_library.takeCalls();
  const ScriptedCalls actions = onlyOf(OperationKind::ACTION, calls);
  if (!isPlan(plan)) {
    ++m_tally[plan.substr(0, plan.find(':'))];
    if (outcome != plan) return "refused: " + plan + "\nthe deed: " + outcome;
    const std::string place = m_told.placeOf(request, plan);
    if (place.empty()) return "told nowhere: " + plan;
    ++m_tally[place];
    return calls.empty() ? "" : "refused: " + plan + "\nthe deed calls " + calls.front().text();
  }
  const std::string deed = actions.empty() ? "" : toldBy(actions.front());
  ++m_tally[actions.empty() ? "no call" : actions.front().operation];
  if (actions.size() > 1) return "more than one call";
  return deed == call ? "" : "planned: " + plan + "\nthe deed: " + deed + "\nanswered: " + outcome;
}

std::string RehearsalWalk::judgeList(const Request& request) {
  const std::wstring argument = m_random.argument();
  std::vector<ServiceObject> values(1 + m_random.below(4));
  for (ServiceObject& value : values) value = m_random.value();
  ServiceObject answers;
  const std::string outcome = ::outcomeOf([&] {
    return answers = m_rehearsed->rehearseEach(request.path, request.method, request.segments,
                                               request.parameters, request.body, argument, values);
  });
  if (!answers.isArray()) {
    ++m_tally["no such argument"];
    return outcome == "ListenerException INVALID_PARAMETER: The path has no segment of this name" ? ""
                                                                                                  : outcome;
  }
  ++m_tally["lists"];
  for (std::size_t place = 0; place < values.size(); ++place) {
    Request single = request;
    if (argument.front() == L'{') {
      single.segments.front() = values[place].toString();
    } else if (single.body.isObject() || single.body.isNull()) {
      single.body.member(argument) = values[place];
    }
    const std::string alone = withClassOfAList(planFor(single));
    const std::string inList = outcomeIn(answers.at(place));
    if (alone != inList) return "alone: " + alone + "\nin the list: " + inList;
  }
  return m_library.takeCalls().empty() ? "" : "the list called the library";
}

std::string RehearsalWalk::step() {
  if (m_steps % kStepsOnAMachine == 0) renewMachine();
  const Request request = m_random.request();
  std::string difference = judgeDeed(request, planFor(request));
  if (difference.empty() && m_steps % kStepsBetweenLists == 0) difference = judgeList(request);
  ++m_steps;
  return difference.empty() ? difference : described(request) + "\n" + difference;
}
