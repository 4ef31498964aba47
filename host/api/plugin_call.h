#ifndef MIRN_HOST_API_PLUGIN_CALL_H
#define MIRN_HOST_API_PLUGIN_CALL_H

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "answers/json_reader.h"
#include "answers/refusal_kinds.h"
#include "api/change_plan.h"
#include "api/endpoint.h"
#include "plugin_extensions.h"
#include "plugin_interface.h"

namespace host {

/// A plug-in, and what else it can do; null for what it cannot.
struct PluginFaces {
  explicit PluginFaces(ovra::service_plugin_interface& given);

  ovra::service_plugin_interface& plugin;
  ovra::described_plugin_1* described;
  ovra::watched_plugin_1* watched;
  ovra::rehearsed_plugin_1* rehearsed;
  ovra::guarded_plugin_1* guarded;
};

/// One of the plug-in's operations. Safe from any thread.
struct PluginCall {
  PluginFaces faces;
  std::wstring key;
  std::int32_t method;
  bool isChange;
  RefusalKinds kinds;
  JsonBounds bodies;
  std::string operation{};
  ChangePlans plans{};  ///< Of changes.

  /// Calls it. A change with If-Match is tried only at the structure that is named there.
  Answer operator()(const Call& call, const std::string& body) const;

  /// Tells what the call would do, for a plug-in that can.
  Answer rehearse(const Call& call, const std::string& body) const;

 private:
  using Value = ovra::data_transfer::ServiceObject;

  Answer answered(const std::function<Answer()>& ask) const;
  Value ask(const Call& call, const Value& body) const;
  void requireKnown(const Call& call) const;
  std::vector<std::wstring> segmentsBehindKey(const Call& call) const;
};

}  // namespace host

#endif
