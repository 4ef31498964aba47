#include "commands/call.h"

#include "answers/record.h"
#include "answers/text_width.h"
#include "arguments/request_of.h"
#include "commands/curl.h"
#include "commands/for_people.h"
#include "commands/plan.h"
#include "commands/wait.h"
#include "exit_status.h"
#include "wire/answers.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

/// Of a page that is not the last.
void tellThereIsMore(const Context& context, const json::value& answer, const Operation& operation) {
  const std::string next = operation.answersPage ? textAt(answer, "next") : std::string();
  if (!next.empty()) {
    context.terminal.err << "mirnctl: there is more: --limit, or --cursor " << printable(next) << std::endl;
  }
}

void show(const Context& context, const json::value& answer, const Operation& operation) {
  const Presentation& presentation = context.wishes.presentation;
  const bool isForPeople = presentation.format == Format::kTable;
  context.terminal.out << shown(isForPeople ? forPeople(context, answer) : answer, operation, presentation)
                       << std::flush;
  tellThereIsMore(context, answer, operation);
}

/// What is no JSON goes out as it comes.
void passOn(const Context& context, const Operation& operation, const Request& request) {
  if (operation.answersFile && context.terminal.screen.width != 0) {
    throw Failure(ExitStatus::kUsage, "what it answers is no text for a terminal",
                  "'> FILE' behind it keeps it");
  }
  const auto take = [&context](std::string_view piece) {
    context.terminal.out.write(piece.data(), static_cast<std::streamsize>(piece.size()));
    return context.terminal.out.good();
  };
  const Reply reply = context.service.follow(request, take);
  if (reply.status >= 300) answerOf(reply);
  context.terminal.out.flush();
}

/// The plan, as the machine is now.
json::value planOf(const Context& context, Request request) {
  request.target += request.target.find('?') == std::string::npos ? "?dryRun=true" : "&dryRun=true";
  return answerOf(context.service.ask(request));
}

void showDryRun(const Context& context, const json::value& plan, const Operation& operation) {
  if (context.wishes.presentation.format != Format::kTable) return show(context, plan, operation);
  tellPlan(plan, context.terminal.out, context.terminal.screen);
}

void change(const Context& context, const Operation& operation, Request request) {
  json::value plan;
  if (operation.takesDryRun) {
    plan = planOf(context, request);
    if (!context.wishes.isDryRun) {
      agree(context, plan);
      if (const std::string structure = structureOf(plan); !structure.empty())
        request.fields["If-Match"] = structure;
    }
  }
  if (context.wishes.isDryRun) return showDryRun(context, plan, operation);
  const bool waits = context.wishes.waits && hasWork(plan);
  const KnownJobs before = waits ? knownJobs(context) : KnownJobs();
  const json::value answer = answerOf(context.service.ask(request));
  if (!answer.is_null()) show(context, answer, operation);
  if (waits) waitForWork(context, plan, before);
}

}  // namespace

void call(const Context& context, const Operation& operation, const Arguments& arguments) {
  if (operation.effect != "read") requireService(context, "change anything");
  Request request = requestOf(operation, arguments, context.names);
  if (context.wishes.isDryRun && !(operation.isChange() && operation.takesDryRun)) {
    throw Failure(ExitStatus::kUsage, "'" + operation.id + "' cannot be tried without being done");
  }
  if (context.wishes.asCurl) {
    requireService(context, "print its requests");
    context.terminal.out << curlOf(request, context.destination) << '\n';
    return;
  }
  if (operation.isChange()) return change(context, operation, std::move(request));
  if (operation.effect == "read" && !operation.answersJson) return passOn(context, operation, request);
  const json::value answer = answerOf(context.service.ask(request));
  if (!answer.is_null() || operation.effect == "read") show(context, answer, operation);
}

void callByName(const Context& context, const std::string& id, const std::vector<std::string>& pairs) {
  Arguments arguments;
  for (const std::string& pair : pairs) {
    const std::size_t equals = pair.find('=');
    if (equals == std::string::npos) throw Failure(ExitStatus::kUsage, "'" + pair + "' is not NAME=VALUE");
    arguments[pair.substr(0, equals)] = pair.substr(equals + 1);
  }
  if (const Operation* const known = context.document.find(id)) return call(context, *known, arguments);
  const Reply reply = context.service.ask({"GET", "/openapi.json"});
  if (reply.status != 200) answerOf(reply);
  const ApiDocument document(reply.body);
  const Operation* const operation = document.find(id);
  if (operation == nullptr) {
    throw Failure(ExitStatus::kNotFound, "the service has no operation '" + id + "'");
  }
  call(context, *operation, arguments);
}

void showOne(const Context& context, const Operation& list, const std::string& type,
             const std::string& name) {
  Operation single = list;
  single.answersList = false;
  const json::value record = context.names.recordOf(type, name);
  show(context, record, single);
}

}  // namespace mirnctl
