#include "api/api_service.h"

#include <algorithm>
#include <boost/algorithm/string/predicate.hpp>
#include <boost/algorithm/string/trim.hpp>
#include <cstdint>
#include <map>
#include <utility>

#include "answers/json_reader.h"
#include "answers/json_writer.h"
#include "http_method.h"
#include "text.h"

namespace host {

namespace {

using ovra::data_transfer::ServiceObject;
using Segments = std::vector<std::wstring>;

constexpr wchar_t kApiSegment[] = L"api";
constexpr wchar_t kHealthSegment[] = L"healthz";
constexpr wchar_t kSimulatorSegment[] = L"simulator";
constexpr wchar_t kDisksPath[] = L"mirn/enddevices";
constexpr wchar_t kTokenParameter[] = L"access_token";
constexpr std::size_t kSegmentsAheadOfKey = 2;  // "api" and the version
constexpr std::int32_t kWorking = 0;

std::int32_t methodCode(const std::string& method) {
  static const std::map<std::string, std::int32_t> kCodes{{"GET", HttpMethod::kGet},
                                                          {"POST", HttpMethod::kPost},
                                                          {"PUT", HttpMethod::kPut},
                                                          {"DELETE", HttpMethod::kDelete}};
  const auto found = kCodes.find(method);
  if (found != kCodes.end()) return found->second;
  throw Refusal(405, "The method is not one of GET, POST, PUT and DELETE",
                {{"Allow", "GET, POST, PUT, DELETE"}});
}

void requireJson(const RequestHead& head) {
  if (!head.hasBody || head.contentType.empty()) return;
  const std::string type =
      boost::algorithm::trim_copy(head.contentType.substr(0, head.contentType.find(';')));
  if (!boost::algorithm::iequals(type, "application/json")) {
    throw Refusal(415, "The body is not of the type application/json");
  }
}

ServiceObject versionObject(const PluginVersion& version) {
  ServiceObject object;
  object.member(L"major") = ServiceObject(version.major);
  object.member(L"minor") = ServiceObject(version.minor);
  object.member(L"patch") = ServiceObject(version.patch);
  object.member(L"build") = ServiceObject(version.build);
  return object;
}

Answer valueAnswer(const ServiceObject& value) {
  if (value.isNull()) return {204, {}, {}, {}};
  return jsonAnswer(writeJson(value));
}

/// The host's own, which needs no body.
template <class Make>
Job ownAnswer(Make make) {
  Job job;
  job.run = [make](const std::string&) { return make(); };
  return job;
}

}  // namespace

ApiService::ApiService(ovra::service_plugin_interface& plugin, const IAuthenticator& authenticator,
                       std::size_t maxBodyDepth, SimulatorControls controls)
    : m_plugin(plugin),
      m_paths(plugin.getHandledPaths()),
      m_keys(m_paths),
      m_authenticator(authenticator),
      m_maxBodyDepth(maxBodyDepth),
      m_controls(std::move(controls)),
      m_disks([this] { return listDisks(); }) {}

Job ApiService::prepare(const RequestHead& head) const {
  RequestTarget target = parseTarget(head.target);
  if (target.segments == Segments{kHealthSegment}) return prepareHealth(head);
  if (target.segments.empty() || target.segments.front() != kApiSegment) {
    throw Refusal(404, "There is nothing under this path");
  }
  const Identity identity = identify(head, target);
  Job job = prepareCall(head, std::move(target));
  job.identity = identity.name;
  return job;
}

Identity ApiService::identify(const RequestHead& head, RequestTarget& target) const {
  Credentials credentials{head.authorization, {}, true, head.client};
  const auto parameter = target.parameters.find(kTokenParameter);
  if (parameter != target.parameters.end()) {
    credentials.parameter = wideToUtf8(parameter->second);
    target.parameters.erase(parameter);  // a secret between the client and the host
  }
  return m_authenticator.identify(credentials);
}

Job ApiService::prepareHealth(const RequestHead& head) const {
  if (head.method != "GET") throw Refusal(405, "The method is not GET", {{"Allow", "GET"}});
  return ownAnswer([this] {
    if (m_plugin.getStatus() == kWorking) return jsonAnswer(R"({"status":"working"})");
    throw Refusal(503, "The plug-in does not work");
  });
}

Job ApiService::prepareCall(const RequestHead& head, RequestTarget target) const {
  const std::int32_t method = methodCode(head.method);
  Segments& segments = target.segments;
  if (segments.size() < kSegmentsAheadOfKey || segments[1] != m_plugin.getApiVersion()) {
    throw Refusal(404, "The interface version is not " + wideToUtf8(m_plugin.getApiVersion()));
  }
  segments.erase(segments.begin(), segments.begin() + kSegmentsAheadOfKey);
  if (segments.empty() && method == HttpMethod::kGet) {
    return ownAnswer([this] { return describePlugin(); });
  }
  const bool isControl = !segments.empty() && segments.front() == kSimulatorSegment;
  if (isControl && !m_controls.isEmpty()) return prepareControl(head, segments);
  const auto match = m_keys.longest(segments);
  if (!match) throw Refusal(404, "The plug-in does not handle this path");
  requireJson(head);
  segments.erase(segments.begin(), segments.begin() + static_cast<std::ptrdiff_t>(match->segmentCount));
  Job job;
  job.lane = method == HttpMethod::kGet ? Lane::kReads : Lane::kChanges;
  job.isChange = job.lane == Lane::kChanges;
  job.run = [this, method, key = match->key, call = std::move(target)](const std::string& body) {
    return valueAnswer(
        m_plugin.handleRequest(key, method, call.segments, call.parameters, readJson(body, m_maxBodyDepth)));
  };
  return job;
}

Job ApiService::prepareControl(const RequestHead& head, const Segments& segments) const {
  const bool isList = segments.size() == 1;
  if (!isList && (segments.size() != 2 || !m_controls.has(segments[1]))) {
    throw Refusal(404, "The simulated library has no such control");
  }
  const std::string method = isList ? "GET" : "POST";
  if (head.method != method) throw Refusal(405, "The method is not " + method, {{"Allow", method}});
  requireJson(head);
  if (isList) return ownAnswer([this] { return valueAnswer(m_controls.describe()); });
  Job job;
  job.lane = Lane::kChanges;
  job.run = [this, name = segments[1]](const std::string& body) {
    return valueAnswer(m_controls.run(name, readJson(body, m_maxBodyDepth), &m_disks));
  };
  return job;
}

/// What the plug-in publishes of its disks; null when it is one that publishes none.
ServiceObject ApiService::listDisks() const {
  const bool isPublished = std::find(m_paths.begin(), m_paths.end(), kDisksPath) != m_paths.end();
  if (!isPublished) return {};
  return m_plugin.handleRequest(kDisksPath, HttpMethod::kGet, {}, {}, {});
}

Answer ApiService::describePlugin() const {
  ServiceObject description;
  description.member(L"name") = m_plugin.getName();
  description.member(L"shortName") = m_plugin.getShortName();
  description.member(L"code") = m_plugin.getCode();
  description.member(L"apiVersion") = m_plugin.getApiVersion();
  description.member(L"version") = versionObject(m_plugin.getVersion());
  ServiceObject& paths = description.member(L"paths");
  paths = ServiceObject::array();
  for (std::size_t i = 0; i < m_paths.size(); ++i) paths.at(i) = m_paths[i];
  return jsonAnswer(writeJson(description));
}

}  // namespace host
