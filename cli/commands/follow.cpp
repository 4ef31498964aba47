#include "commands/follow.h"

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <chrono>
#include <thread>

#include "answers/record.h"
#include "answers/text_width.h"
#include "exit_status.h"
#include "wire/answers.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

constexpr std::chrono::seconds kPause{1};

/// In one line; empty for what is of no interest to people.
std::string lineOf(const StreamReader::Event& event, const json::value& data) {
  if (event.name == "gap")
    return "-- missing: " + printableAt(data, "first") + " to " + printableAt(data, "last");
  if (event.name == "bye") return "-- the service stops";
  if (event.name == "heartbeat" || event.name == "revision") return {};
  std::string line = printableAt(data, "at");
  for (const std::string& part :
       {event.name, printableAt(data, "severity"), wordsOfEntry(data), printableAt(data, "outcome")}) {
    if (!part.empty()) line += "  " + part;
  }
  return line;
}

void show(const Context& context, const StreamReader::Event& event) {
  boost::system::error_code error;
  const json::value data = json::parse(event.data, error);
  if (error) return;
  const bool isForPeople = context.wishes.presentation.format == Format::kTable;
  const std::string line = isForPeople ? lineOf(event, data)
                                       : json::serialize(json::object{{"event", event.name}, {"data", data}});
  if (!line.empty()) context.terminal.out << line << std::endl;
}

}  // namespace

void StreamReader::take(std::string_view piece, const std::function<void(const Event&)>& tell) {
  for (const char c : piece) {
    if (c != '\n') {
      m_line += c;
      continue;
    }
    takeLine(m_line, tell);
    m_line.clear();
  }
}

void StreamReader::takeLine(std::string_view line, const std::function<void(const Event&)>& tell) {
  if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
  if (line.empty()) {
    if (!m_event.data.empty()) tell(m_event);
    m_event.name.clear();
    m_event.data.clear();
    return;
  }
  const std::size_t colon = line.find(':');
  if (colon == 0 || colon == std::string_view::npos) return;
  const std::string_view name = line.substr(0, colon);
  std::string_view value = line.substr(colon + 1);
  if (!value.empty() && value.front() == ' ') value.remove_prefix(1);
  if (name == "event") m_event.name = value;
  if (name == "id") m_event.id = value;
  if (name == "data") m_event.data += (m_event.data.empty() ? "" : "\n") + std::string(value);
}

void follow(const Context& context) {
  const Operation* const operation = context.document.find("streamEvents");
  if (operation == nullptr) throw Failure(ExitStatus::kNotFound, "this service has no stream of events");
  requireService(context, "tell what happens now");
  std::string last;
  for (bool goesOn = true; goesOn;) {
    Request request{"GET", operation->path};
    if (!last.empty()) request.fields["Last-Event-ID"] = last;
    StreamReader reader;
    const auto tell = [&](const StreamReader::Event& event) {
      if (!event.id.empty()) last = event.id;
      show(context, event);
      goesOn = event.name != "bye" && context.terminal.out.good();
    };
    const Reply reply = context.service.follow(request, [&](std::string_view piece) {
      reader.take(piece, tell);
      return goesOn;
    });
    if (reply.status >= 300) answerOf(reply);
    if (goesOn) std::this_thread::sleep_for(kPause);  // one that took too little is ended, and may come back
  }
}

}  // namespace mirnctl
