#ifndef MIRN_BENCH_RUNNING_PLUGIN_H
#define MIRN_BENCH_RUNNING_PLUGIN_H

#include <string>
#include <utility>
#include <vector>

#include "http_method.h"
#include "mirn_plugin.h"
#include "scripted_library/scripted_library.h"

/// An initialised plug-in on a machine. Calls are not recorded, and the event thread sleeps.
class RunningPlugin {
 public:
  using ServiceObject = ovra::data_transfer::ServiceObject;

  explicit RunningPlugin(ScriptedMachine machine) {
    library.recordCalls(false);
    library.setMachine(std::move(machine));
    plugin.initialize();
  }
  RunningPlugin(const RunningPlugin&) = delete;
  RunningPlugin& operator=(const RunningPlugin&) = delete;
  ~RunningPlugin() {
    library.events().release();
    plugin.finish();
  }

  ServiceObject get(const std::wstring& path) {
    return plugin.handleRequest(path, HttpMethod::kGet, {}, {}, ServiceObject::null());
  }
  ServiceObject put(const std::wstring& path, const std::vector<std::wstring>& segments,
                    const ServiceObject& body) {
    return plugin.handleRequest(path, HttpMethod::kPut, segments, {}, body);
  }

  ScriptedLibrary& library = ScriptedLibrary::fresh();
  mirn_plugin plugin;
};

#endif
