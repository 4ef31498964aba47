#include "api/session_endpoints.h"

#include <utility>

#include "answers/json_reader.h"
#include "answers/json_writer.h"
#include "api/api_path.h"
#include "text.h"

namespace host {

namespace {

using ovra::data_transfer::ServiceObject;

constexpr wchar_t kSession[] = L"session";
constexpr wchar_t kCodes[] = L"session/codes";
constexpr JsonBounds kBodies{1, 100};
constexpr int kText = 5;  // as `ServiceObject::which` tells
constexpr unsigned kCreated = 201;

/// The text under `key` of a body; nothing without one.
std::optional<std::string> textIn(const std::string& body, const wchar_t* key) {
  const ServiceObject value = readJson(body, kBodies);
  if (!value.isObject() || !value.hasKey(key)) return {};
  const ServiceObject& member = value.member(key);
  if (member.which() != kText) throw Refusal(400, "The member \"" + wideToUtf8(key) + "\" is no text");
  return wideToUtf8(member.toString());
}

Answer created(const ServiceObject& value) {
  Answer answer = jsonAnswer(writeJson(value));
  answer.status = kCreated;
  return answer;
}

Answer beginSession(Admission& admission, const Call& call, const std::string& body) {
  const auto code = textIn(body, L"code");
  if (!code) throw Refusal(400, "The body is not {\"code\": \"...\"}");
  const Admission::Session session = admission.signIn(*code, call.client);
  ServiceObject value;
  value.member(L"token") = utf8ToWide(session.token);
  value.member(L"role") = utf8ToWide(toText(session.role));
  value.member(L"lifeSeconds") = static_cast<std::uint64_t>(session.life.count());
  return created(value);
}

/// A code for somebody who may do less than a token says would outlive that token: only users of the machine,
/// whom nothing of ours lets in, get one.
Answer makeCode(Admission& admission, const std::string& url, const Call& call, const std::string& body) {
  if (!call.client.localUser || !call.identity.proof.empty()) {
    throw Refusal(403, "Codes are made over the Unix socket, for users of the machine");
  }
  const std::string word = textIn(body, L"role").value_or(toText(call.identity.role));
  const auto role = roleOf(word);
  if (!role) throw Refusal(400, "The role is not observe, operate or administer");
  if (*role > call.identity.role) throw Refusal(403, "The role is more than your own");
  const std::string code = admission.makeCode({call.identity.name, *role});
  ServiceObject value;
  value.member(L"code") = utf8ToWide(code);
  value.member(L"role") = utf8ToWide(word);
  value.member(L"url") = utf8ToWide(signInAddress(url, code));
  return created(value);
}

Answer showSession(const Call& call) {
  ServiceObject value;
  value.member(L"name") = utf8ToWide(call.identity.name);
  value.member(L"role") = utf8ToWide(toText(call.identity.role));
  return jsonAnswer(writeJson(value));
}

Answer endSession(Admission& admission, const Call& call) {
  if (!admission.signOut(call.identity)) throw Refusal(409, "Who asks has no session to end");
  return {204, {}, {}, {}};
}

ApiEndpoint ownEndpoint(const char* operation, const char* method, std::wstring path,
                        std::optional<Role> role) {
  ApiEndpoint endpoint;
  endpoint.operation = operation;
  endpoint.method = method;
  endpoint.path = std::move(path);
  endpoint.role = role;
  endpoint.takesTokenParameter = false;
  return endpoint;
}

constexpr char kSessionSchema[] = R"({
  "type": "object",
  "properties": {
    "token": {"type": "string", "description": "For the Authorization field."},
    "role": {"type": "string", "enum": ["observe", "operate", "administer"]},
    "lifeSeconds": {"type": "integer", "minimum": 0}
  },
  "required": ["token", "role", "lifeSeconds"],
  "additionalProperties": false
})";

constexpr char kCallerSchema[] = R"({
  "type": "object",
  "properties": {
    "name": {"type": "string", "description": "As the audit has it."},
    "role": {"type": "string", "enum": ["observe", "operate", "administer"]}
  },
  "required": ["name", "role"],
  "additionalProperties": false
})";

constexpr char kSignInSchema[] = R"({
  "type": "object",
  "properties": {
    "code": {"type": "string", "description": "Good for one sign-in within ten minutes."},
    "role": {"type": "string", "enum": ["observe", "operate", "administer"]},
    "url": {"type": "string", "description": "Signs a browser in."}
  },
  "required": ["code", "role", "url"],
  "additionalProperties": false
})";

EndpointDocument beginDocument() {
  EndpointDocument document{
      "session",
      "begin",
      "Makes a session of a sign-in code.",
      "A code is good once. The session's token has the code's role, and ends with the host.",
      {{kCreated, "The session.", kSessionSchema}, {401, {}}}};
  document.effect = "changes";
  document.body = R"({
    "type": "object",
    "properties": {"code": {"type": "string", "description": "As the host told it."}},
    "required": ["code"]
  })";
  return document;
}

EndpointDocument showDocument() {
  return {"session",
          "show",
          "Tells who asks, and in which role.",
          "Of any token, and over the Unix socket of its user.",
          {{200, "Who asks.", kCallerSchema}}};
}

EndpointDocument endDocument() {
  EndpointDocument document{"session",
                            "end",
                            "Ends the session whose token asks.",
                            "Another kind of token has none to end.",
                            {{204, "It has ended."}, {409, {}}}};
  document.effect = "changes";
  return document;
}

EndpointDocument codeDocument() {
  EndpointDocument document{
      "session",
      "code",
      "Makes a sign-in code.",
      "Over the Unix socket only, for users of the machine, and for no greater role than theirs.",
      {{kCreated, "The code.", kSignInSchema}}};
  document.effect = "changes";
  document.body = R"({
    "type": "object",
    "properties": {
      "role": {
        "type": "string",
        "enum": ["observe", "operate", "administer"],
        "description": "Without it one's own."
      }
    }
  })";
  document.needsBody = false;
  return document;
}

}  // namespace

std::string signInAddress(const std::string& url, const std::string& code) { return url + "/#code=" + code; }

void addSessionEndpoints(EndpointTable& table, const ovra::plugin_interface& plugin, Admission& admission,
                         std::function<std::string()> url) {
  ApiEndpoint begin = ownEndpoint("beginSession", "POST", apiPath(plugin, kSession), {});
  begin.document = beginDocument();
  begin.handle = [&admission](const Call& call, const std::string& body) {
    return beginSession(admission, call, body);
  };
  table.add(std::move(begin));
  ApiEndpoint show = ownEndpoint("getSession", "GET", apiPath(plugin, kSession), Role::kObserve);
  show.document = showDocument();
  show.handle = [](const Call& call, const std::string&) { return showSession(call); };
  table.add(std::move(show));
  ApiEndpoint end = ownEndpoint("endSession", "DELETE", apiPath(plugin, kSession), Role::kObserve);
  end.document = endDocument();
  end.handle = [&admission](const Call& call, const std::string&) { return endSession(admission, call); };
  table.add(std::move(end));
  ApiEndpoint code = ownEndpoint("makeSignInCode", "POST", apiPath(plugin, kCodes), Role::kObserve);
  code.document = codeDocument();
  code.handle = [&admission, url = std::move(url)](const Call& call, const std::string& body) {
    return makeCode(admission, url(), call, body);
  };
  table.add(std::move(code));
}

}  // namespace host
