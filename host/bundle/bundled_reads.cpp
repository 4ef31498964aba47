#include "bundle/bundled_reads.h"

#include <algorithm>
#include <boost/algorithm/string/classification.hpp>
#include <boost/algorithm/string/split.hpp>
#include <cctype>
#include <optional>
#include <utility>

#include "text.h"

namespace host {

namespace {

using Segments = std::vector<std::wstring>;
using Parameters = std::map<std::wstring, std::wstring>;

constexpr char kActions[] = "listActions";
constexpr wchar_t kLimit[] = L"limit";
constexpr wchar_t kCursor[] = L"cursor";
constexpr wchar_t kWholePage[] = L"1000";

/// What is left out always.
struct LeftOutRow {
  const char* operation;
  const char* reason;
};
constexpr LeftOutRow kLeftOut[] = {
    {"exportHistory", "The last entries of the history are there as its pages."},
    {"getAlarm", "The lists of alarms have them whole."},
    {"getBundle", "It is this one."},
    {"getConsole", "It holds nothing of the machine."},
    {"getConsoleIcon", "It holds nothing of the machine."},
    {"getConsoleScript", "It holds nothing of the machine."},
    {"getConsoleStyle", "It holds nothing of the machine."},
    {"getDocumentation", "openapi.json tells the same."},
    {"getJob", "The lists of jobs have them whole."},
    {"getMetrics", "The other answers tell the same."},
    {"getSession", "It is whoever asked for this one."},
    {"listCandidates", "There are too many arguments to ask for."},
    {"streamEvents", "It has no end."},
};

/// What is asked for beside the usual.
struct FurtherRow {
  const char* operation;
  const wchar_t* parameter;
  const wchar_t* word;
};
constexpr FurtherRow kFurther[] = {
    {"listAlarms", L"state", L"cleared"},
    {"listJobs", L"state", L"ended"},
};

/// What has to be told with each request: the last events, however old.
constexpr FurtherRow kNeeded[] = {{"listEvents", L"time", L"4294967295"}};

const char* whyLeftOut(const ApiEndpoint& endpoint) {
  for (const LeftOutRow& row : kLeftOut) {
    if (endpoint.operation == row.operation) return row.reason;
  }
  return endpoint.handle ? nullptr : "It comes in parts.";
}

bool isName(const std::wstring& segment) { return !segment.empty() && segment.front() == L'{'; }

Segments segmentsOf(const std::wstring& path) {
  Segments segments;
  boost::algorithm::split(segments, path, boost::algorithm::is_any_of(L"/"));
  return segments;
}

/// The plug-in tells of its operations itself.
bool isOfPlugin(const ApiEndpoint& endpoint) { return !endpoint.document; }

bool hasPages(const ApiEndpoint& endpoint) {
  if (!endpoint.document) return false;
  const auto& parameters = endpoint.document->parameters;
  return std::any_of(parameters.begin(), parameters.end(),
                     [](const DocumentedParameter& each) { return utf8ToWide(each.name) == kCursor; });
}

bool isPlain(char character) {
  return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '-' || character == '_' ||
         character == '.';
}

/// Nothing that a name of a file cannot be, and no way out of the folder.
std::string encoded(const std::string& segment) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  const bool isWayOut = segment.find_first_not_of('.') == std::string::npos;
  std::string text;
  for (const char character : segment) {
    if (isPlain(character) && !isWayOut) {
      text += character;
    } else {
      const auto byte = static_cast<unsigned char>(character);
      text += {'%', kDigits[byte >> 4U], kDigits[byte & 0xFU]};
    }
  }
  return text;
}

std::string joined(const Segments& segments) {
  std::string text;
  for (const std::wstring& each : segments) text += (text.empty() ? "" : "/") + encoded(wideToUtf8(each));
  return text;
}

/// The paths that a template stands for; nothing where nobody knows.
std::optional<std::vector<Segments>> pathsOf(const ApiEndpoint& endpoint, const BundledObjects& objects) {
  const Segments path = segmentsOf(endpoint.path);
  const auto name = std::find_if(path.begin(), path.end(), isName);
  if (name == path.end()) return std::vector<Segments>{path};
  const auto place = static_cast<std::size_t>(name - path.begin());
  std::vector<Segments> paths;
  if (endpoint.operation == kActions) {
    for (const auto& [type, id] : objects.acting) {
      paths.push_back(path);
      paths.back()[place] = type;
      paths.back()[place + 1] = id;
    }
    return paths;
  }
  const auto ids = objects.ids.find(name->substr(1, name->size() - 2));
  if (ids == objects.ids.end() || std::count_if(path.begin(), path.end(), isName) > 1) return {};
  for (const std::wstring& id : ids->second) {
    paths.push_back(path);
    paths.back()[place] = id;
  }
  return paths;
}

void addReads(const ApiEndpoint& endpoint, const Segments& path, std::vector<BundledRead>& reads) {
  BundledRead read{&endpoint, {path, {}}, joined(path)};
  if (hasPages(endpoint)) {
    read.page = 1;
    read.target.parameters[kLimit] = kWholePage;
  }
  for (const FurtherRow& row : kNeeded) {
    if (endpoint.operation == row.operation) read.target.parameters[row.parameter] = row.word;
  }
  reads.push_back(read);
  for (const FurtherRow& row : kFurther) {
    if (endpoint.operation != row.operation) continue;
    BundledRead further = read;
    further.target.parameters[row.parameter] = row.word;
    further.file += '.' + wideToUtf8(row.word);
    reads.push_back(std::move(further));
  }
}

class Collection {
 public:
  Collection(const BundledObjects& objects, std::vector<LeftOut>& leftOut)
      : m_objects(objects), m_leftOut(leftOut) {}

  void add(const ApiEndpoint& endpoint) {
    if (const char* const reason = whyLeftOut(endpoint)) return leaveOut(endpoint, reason);
    const auto paths = pathsOf(endpoint, m_objects);
    if (!paths) return leaveOut(endpoint, "Nobody knows of what to ask it.");
    for (const Segments& path : *paths) addReads(endpoint, path, reads);
    if (endpoint.operation != kActions || m_objects.areAllActing) return;
    leaveOut(endpoint,
             "Of more than " + std::to_string(m_objects.mostActing) + " objects there are no actions.");
  }

  std::vector<BundledRead> reads;

 private:
  void leaveOut(const ApiEndpoint& endpoint, std::string reason) {
    m_leftOut.push_back({endpoint.operation, std::move(reason)});
  }

  const BundledObjects& m_objects;
  std::vector<LeftOut>& m_leftOut;
};

std::vector<BundledRead> readsOf(const std::vector<ApiEndpoint>& endpoints, bool ofPlugin,
                                 const BundledObjects& objects, std::vector<LeftOut>& leftOut) {
  Collection collection(objects, leftOut);
  for (const ApiEndpoint& endpoint : endpoints) {
    if (isOfPlugin(endpoint) == ofPlugin) collection.add(endpoint);
  }
  return std::move(collection.reads);
}

}  // namespace

void BundledOperations::learn(const EndpointTable& table) {
  for (const EndpointTable::Resource& resource : table.resources()) {
    const ApiEndpoint* const endpoint = resource.find("GET");
    if (endpoint == nullptr) continue;
    m_endpoints.push_back(*endpoint);
    // Never used here, and that of the bundle itself holds the one who holds these.
    m_endpoints.back().begin = nullptr;
  }
}

std::vector<BundledRead> BundledOperations::readsOfPlugin(const BundledObjects& objects,
                                                          std::vector<LeftOut>& leftOut) const {
  return readsOf(m_endpoints, true, objects, leftOut);
}

std::vector<BundledRead> BundledOperations::readsOfHost(const BundledObjects& objects,
                                                        std::vector<LeftOut>& leftOut) const {
  return readsOf(m_endpoints, false, objects, leftOut);
}

BundledRead nextPage(const BundledRead& read, const std::string& cursor) {
  BundledRead next = read;
  next.target.parameters[kCursor] = utf8ToWide(cursor);
  if (read.page > 1) next.file.erase(next.file.rfind('.'));
  next.file += ".page-" + std::to_string(++next.page);
  return next;
}

std::string targetText(const RequestTarget& target) {
  std::string text = '/' + joined(target.segments);
  char joint = '?';
  for (const auto& [name, value] : target.parameters) {
    text += joint + encoded(wideToUtf8(name)) + '=' + encoded(wideToUtf8(value));
    joint = '&';
  }
  return text;
}

}  // namespace host
