#include "insight/machine/served_simulation.h"

#include <stdexcept>

#include "http_method.h"
#include "vexl2_simulator.h"

namespace {

void done(VEX_STATUS status) {
  if (status == VEX_STATUS_SUCCESS) return;
  char text[512] = "";
  VexSimLastError(text, sizeof(text));
  throw std::runtime_error("status " + std::to_string(status) + ": " + text);
}

}  // namespace

ServedSimulation::ServedSimulation(const LoadedModule& module) : m_plugin(module.registerPlugin()) {
  done(VexSimSetClockSpeed(0));
  done(VexSimCapEventWait(5));
  if (!m_plugin->initialize()) throw std::runtime_error("the plug-in does not start");
}

ServedSimulation::~ServedSimulation() { m_plugin->finish(); }

void ServedSimulation::load(const std::string& scenario) {
  done(VexSimLoadText(scenario.c_str()));
  rescan();
}

std::string ServedSimulation::save() {
  std::uint32_t size = 0;
  VexSimSaveText(nullptr, &size);
  std::string text(size, '\0');
  done(VexSimSaveText(text.data(), &size));
  text.resize(size - 1);
  return text;
}

void ServedSimulation::rescan() { m_plugin->handleRequest(L"mirn", HttpMethod::kPost, {L"rescan"}, {}, {}); }

insight::MachineView ServedSimulation::view() {
  return insight::machineViewOf(as<ovra::watched_plugin_1>().picture());
}
