#include "api/plugin_call.h"

#include <algorithm>
#include <optional>

#include "api/api_path.h"
#include "api/known_structure.h"

namespace host {

namespace {

template <class Face>
Face* faceOf(ovra::service_plugin_interface& plugin) {
  return dynamic_cast<Face*>(&plugin);
}

constexpr char kChanged[] = "The machine has changed meanwhile";

}  // namespace

PluginFaces::PluginFaces(ovra::service_plugin_interface& given)
    : plugin(given),
      described(faceOf<ovra::described_plugin_1>(given)),
      watched(faceOf<ovra::watched_plugin_1>(given)),
      rehearsed(faceOf<ovra::rehearsed_plugin_1>(given)),
      guarded(faceOf<ovra::guarded_plugin_1>(given)) {}

Answer PluginCall::operator()(const Call& call, const std::string& body) const {
  const Value value = readJson(body, bodies);
  return answered([&] { return valueAnswer(ask(call, value)); });
}

Answer PluginCall::rehearse(const Call& call, const std::string& body) const {
  const Value value = readJson(body, bodies);
  const auto rehearse = [&] {
    return faces.rehearsed->rehearse(key, method, segmentsBehindKey(call), call.target.parameters, value);
  };
  return answered([&] {
    const bool isPlanned = isChange && plans.make;
    Answer plan = isPlanned ? plans.make({operation, segmentsBehindKey(call), value}, rehearse)
                            : valueAnswer(rehearse());
    requireKnown(call);
    return plan;
  });
}

/// The structure from before the call: who goes on from there can have missed nothing.
Answer PluginCall::answered(const std::function<Answer()>& ask) const {
  std::optional<ovra::PluginPosition> before;
  if (faces.watched) before = faces.watched->position();
  Answer answer;
  try {
    answer = ask();
  } catch (const std::exception& failure) {
    answer = failureAnswer(failure, kinds);
  }
  if (before) answer.headers.emplace_back("Mirn-Structure", structureField(*before));
  return answer;
}

PluginCall::Value PluginCall::ask(const Call& call, const Value& body) const {
  const auto& parameters = call.target.parameters;
  if (!isChange || !call.wishes.ifMatch) {
    return faces.plugin.handleRequest(key, method, segmentsBehindKey(call), parameters, body);
  }
  const KnownStructure known = knownStructureIn(*call.wishes.ifMatch);
  if (!faces.guarded) throw Refusal(422, "The plug-in cannot hold a change to what the client knows");
  return faces.guarded->handleRequestAt(known.epoch, known.structure, key, method, segmentsBehindKey(call),
                                        parameters, body);
}

/// A rehearsal is refused as the change would be, and after the same checks.
void PluginCall::requireKnown(const Call& call) const {
  if (!isChange || !call.wishes.ifMatch) return;
  const KnownStructure known = knownStructureIn(*call.wishes.ifMatch);
  if (!faces.guarded || !faces.watched) {
    throw Refusal(422, "The plug-in cannot hold a change to what the client knows");
  }
  const ovra::PluginPosition now = faces.watched->position();
  if (known.epoch != now.epoch || known.structure != now.structure) throw Refusal(412, kChanged);
}

std::vector<std::wstring> PluginCall::segmentsBehindKey(const Call& call) const {
  const auto count = kApiSegmentCount + 1 + std::count(key.begin(), key.end(), L'/');
  return {call.target.segments.begin() + count, call.target.segments.end()};
}

}  // namespace host
