#include "module/served_module.h"

#include <stdexcept>

#include "scripted_library/scripted_library.h"

ServedModule::~ServedModule() {
  ScriptedLibrary::instance().events().release();
  m_plugin->finish();
}

void ServedModule::start() {
  if (!m_plugin->initialize()) throw std::logic_error("the plug-in does not start");
  ScriptedLibrary::instance().events().waitForEventWaits(1);
}

std::string ServedModule::outcomeOf(const Request& request) const {
  return ::outcomeOf([&] { return serve(*m_plugin, request); });
}

std::string ServedModule::picture(bool whole) const {
  std::string lists = outcomeOf(get(L"mirn/arrays")) + '\n' + outcomeOf(get(L"mirn/volumes"));
  if (!whole) return lists;
  for (const wchar_t* const path : {L"mirn/raids", L"mirn/controllers", L"mirn/enddevices", L"mirn/ports"}) {
    lists += '\n' + outcomeOf(get(path));
  }
  return lists;
}
