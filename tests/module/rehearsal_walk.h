#ifndef MIRN_TESTS_MODULE_REHEARSAL_WALK_H
#define MIRN_TESTS_MODULE_REHEARSAL_WALK_H

#include <map>
#include <memory>
#include <string>

#include "module/random_requests.h"
#include "module/served_module.h"
#include "module/told_refusals.h"
#include "plugin_extensions.h"
#include "scripted_library/scripted_library.h"
#include "support/default_settings.h"

/// Rehearses requests at random, and does each of them afterwards: the rehearsal must tell what the deed then
/// does, and each refusal must be among those that the plug-in tells ahead. Outside the promise are a lock
/// that is not had in time, a store that refuses a setting, and lack of memory; none befalls the walk.
class RehearsalWalk {
 public:
  RehearsalWalk(const LoadedModule& module, std::uint32_t seed);

  /// Makes one step. Tells where rehearsal and deed part; nothing where they agree.
  std::string step();

  /// What was seen, so that nobody takes a walk for thorough that isn't: the operations that were called, and
  /// the refusals by class and id and by the place where they are told, each with its number of times.
  const std::map<std::string, unsigned long>& tally() const { return m_tally; }

 private:
  void renewMachine();
  std::string planFor(const Request& request);
  std::string judgeDeed(const Request& request, const std::string& plan);
  std::string judgeList(const Request& request);

  ScriptedLibrary& m_library = ScriptedLibrary::fresh();
  const DefaultSettings m_settings;
  RandomRequests m_random;
  ServedModule m_served;
  std::shared_ptr<ovra::rehearsed_plugin_1> m_rehearsed;
  const ToldRefusals m_told;
  unsigned long m_steps = 0;
  std::map<std::string, unsigned long> m_tally;
};

#endif
