#include "bundle/bundle_endpoint.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "api/allowed_source.h"
#include "api/api_path.h"
#include "api/places.h"
#include "bundle/bundle_source.h"
#include "insight/query_parameters.h"
#include "tick_clock.h"
#include "utc_time.h"

namespace host {

namespace {

constexpr char kMediaType[] = "application/gzip";
constexpr std::size_t kMostBundles = 2;  // at once: each asks for everything

/// "20261122T164000Z" of a moment.
std::string compactTime(std::int64_t ticks) {
  std::string text = utcText(ticks);
  text.erase(text.find('.'));
  text.erase(std::remove_if(text.begin(), text.end(), [](char each) { return each == '-' || each == ':'; }),
             text.end());
  return text + 'Z';
}

std::vector<DocumentedParameter> parameters() {
  return {{"mask", false, "Other texts stand for serial numbers and ids, the same ones for the same.",
           R"({"type": "boolean"})"}};
}

bool wantsMask(const Parameters& given) {
  requireKnown(given, parameters());
  return wordIn(given, "mask", {"true", "false"}) == "true";
}

OpenAnswer beginBundle(const std::shared_ptr<const BundleSubject>& subject, Places& places,
                       const std::shared_ptr<const Call>& call) {
  const bool isMasked = wantsMask(call->target.parameters);
  auto place = places.take();
  if (!place) throw Refusal(503, "Too many bundles are being made", {{"Retry-After", "10"}});
  const std::int64_t ticks = currentTicks();
  const std::string name = "mirn-bundle-" + compactTime(ticks) + ".tar.gz";
  auto source =
      std::make_unique<BundleSource>(std::move(place), subject, call, ticks / kTicksPerMillisecond, isMasked);
  return {{200, kMediaType, {}, {{"Content-Disposition", "attachment; filename=\"" + name + '"'}}},
          whileAllowed(call, std::move(source))};
}

EndpointDocument document() {
  EndpointDocument document{
      "",
      "bundle",
      "Gives all that there is to read, in one file for somebody elsewhere.",
      "A .tar.gz of the answers under their paths, with manifest.json and openapi.json. It has no token "
      "and no audit. An answer that breaks off has no end that its client would take for one.",
      {{200, "The file.", R"({"type": "string", "contentMediaType": "application/gzip"})", kMediaType}}};
  document.parameters = parameters();
  return document;
}

}  // namespace

void addBundleEndpoint(EndpointTable& table, std::shared_ptr<const BundleSubject> subject) {
  ApiEndpoint endpoint;
  endpoint.operation = "getBundle";
  endpoint.method = "GET";
  endpoint.path = apiPath(subject->plugin, L"bundle");
  endpoint.role = Role::kAdminister;
  endpoint.lane = Lane::kReads;
  endpoint.document = document();
  const auto places = std::make_shared<Places>(kMostBundles);
  endpoint.begin = [subject = std::move(subject), places](const std::shared_ptr<const Call>& call,
                                                          const std::shared_ptr<Exchange>& exchange,
                                                          const std::string&) {
    exchange->answerInParts(
        [subject, places, call](const WakeSource&) { return beginBundle(subject, *places, call); });
  };
  table.add(std::move(endpoint));
}

}  // namespace host
