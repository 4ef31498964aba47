#include "console/console_endpoints.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "answers/answer_fields.h"
#include "answers/content_coding.h"
#include "answers/entity_tag.h"
#include "identity/secrets.h"

namespace host {

namespace {

constexpr std::size_t kTagDigits = 32;
constexpr unsigned kNotModified = 304;

/// The page runs its own script and no other, and talks to nobody but the host that it came from.
constexpr char kPolicy[] =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; connect-src 'self'; "
    "base-uri 'none'; form-action 'none'; frame-ancestors 'none'";

/// Where a file of the console is found, and what documents tell of it.
struct FileRow {
  std::string_view ConsoleFiles::*bytes;
  const wchar_t* path;
  const char* type;
  const char* operation;
  const char* verb;
  const char* summary;
};

constexpr FileRow kFiles[] = {
    {&ConsoleFiles::page, L"", "text/html", "getConsole", "console", "Gives the page of the console."},
    {&ConsoleFiles::script, L"console/app.js", "text/javascript", "getConsoleScript", "console-script",
     "Gives the script of the console."},
    {&ConsoleFiles::style, L"console/app.css", "text/css", "getConsoleStyle", "console-style",
     "Gives the style sheet of the console."},
    {&ConsoleFiles::icon, L"console/icon.svg", "image/svg+xml", "getConsoleIcon", "console-icon",
     "Gives the icon of the console."}};

/// One form of a file, and how it goes out.
class Form {
 public:
  Form(const std::string& type, Body bytes, const char* coding)
      : m_tag('"' + sha256Hex(bytes.text()).substr(0, kTagDigits) + '"') {
    // Whoever keeps a copy asks whether it is still good: after an update no old script meets a new page.
    Headers headers{{"Cache-Control", "no-cache"},
                    {"Content-Security-Policy", kPolicy},
                    {"ETag", m_tag},
                    {"Vary", "Accept-Encoding"}};
    m_unchanged = rendered(Answer{kNotModified, {}, {}, headers});
    if (coding != nullptr) headers.emplace_back("Content-Encoding", coding);
    m_whole = rendered(Answer{200, type, std::move(bytes), std::move(headers)});
  }

  const Answer& answerTo(const AnswerWishes& wishes) const {
    const bool isKnown = wishes.ifNoneMatch && namesTag(*wishes.ifNoneMatch, m_tag, TagComparison::kWeak);
    return isKnown ? m_unchanged : m_whole;
  }

 private:
  std::string m_tag;
  Answer m_whole;
  Answer m_unchanged;
};

/// A file, plain and packed, made once. Constant.
class ServedFile {
 public:
  ServedFile(const std::string& type, std::string_view bytes)
      : m_plain(type, std::string(bytes), nullptr),
        m_packed(type, gzip(bytes), "gzip"),
        m_packsFrom(bytes.size() >= kGzipFrom ? ContentCoding::kGzipLarge : ContentCoding::kGzipAll) {}

  /// Plain for a client that takes no form at all, too: a page helps more than a refusal.
  const Answer& answerTo(const AnswerWishes& wishes) const {
    const auto coding = codingFor(wishes.acceptEncoding);
    const bool isPacked = coding && *coding >= m_packsFrom;
    return (isPacked ? m_packed : m_plain).answerTo(wishes);
  }

 private:
  Form m_plain;
  Form m_packed;
  ContentCoding m_packsFrom;
};

ApiEndpoint fileEndpoint(const FileRow& row, std::string_view bytes) {
  ApiEndpoint endpoint;
  endpoint.operation = row.operation;
  endpoint.method = "GET";
  endpoint.path = row.path;
  endpoint.lane = Lane::kAtOnce;
  endpoint.document = EndpointDocument{
      "host",
      row.verb,
      row.summary,
      "For browsers; it holds nothing of the machine.",
      {{200, "The file.", R"({"type": "string"})", row.type}, {kNotModified, "The client has it already."}}};
  const auto file = std::make_shared<const ServedFile>(std::string(row.type) + "; charset=utf-8", bytes);
  endpoint.handle = [file](const Call& call, const std::string&) { return file->answerTo(call.wishes); };
  return endpoint;
}

}  // namespace

void addConsoleEndpoints(EndpointTable& table, const ConsoleFiles& files) {
  for (const FileRow& row : kFiles) table.add(fileEndpoint(row, files.*row.bytes));
}

}  // namespace host
