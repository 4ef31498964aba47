#ifndef MIRN_SIMULATOR_WHATIF_COURSE_H
#define MIRN_SIMULATOR_WHATIF_COURSE_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/machine.h"
#include "whatif/whatif_question.h"

namespace simulator {

/// What came of an event. Moments are milliseconds of machine time from the beginning.
struct EventOutcome {
  AskedEvent event;
  std::uint64_t atMs = 0;
  bool hasHappened = true;
};

struct StateChange {
  std::uint64_t atMs = 0;
  Handle volume = 0;
  std::string_view from;  ///< Published words.
  std::string_view to;
};

struct Takeover {
  std::uint64_t atMs = 0;
  Handle array = 0;
  Handle disk = 0;
  Handle instead = 0;
};

/// A time in which a volume has not the redundancy of its level.
struct Exposure {
  Handle volume = 0;
  std::uint64_t fromMs = 0;
  bool isOlder = false;               ///< It was there before the first event.
  std::optional<std::uint64_t> toMs;  ///< Nothing: it does not end by itself.
};

/// A machine as time goes on, with everything that comes of it noted down.
class Course {
 public:
  explicit Course(Machine& machine);

  void let(const AskedEvent& event);

  /// Until nothing happens by itself any more.
  void goOn();

  const std::vector<EventOutcome>& outcomes() const { return m_outcomes; }
  const std::vector<StateChange>& changes() const { return m_changes; }
  const std::vector<Takeover>& takeovers() const { return m_takeovers; }
  const std::vector<Exposure>& exposures() const { return m_exposures; }
  /// Volumes that do not serve now, and did before.
  std::vector<Handle> lost() const;

 private:
  void pass(std::uint64_t milliseconds);
  void look();
  void lookAt(const Volume& volume);
  void lookAt(const Array& array);

  Machine& m_machine;
  bool m_hasBegun = false;
  std::uint64_t m_nowMs = 0;
  std::map<Handle, std::string_view> m_states;
  std::map<Handle, bool> m_served;
  std::map<Handle, std::vector<Handle>> m_members;
  std::vector<EventOutcome> m_outcomes;
  std::vector<StateChange> m_changes;
  std::vector<Takeover> m_takeovers;
  std::vector<Exposure> m_exposures;
};

}  // namespace simulator

#endif
