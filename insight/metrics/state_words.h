#ifndef MIRN_INSIGHT_METRICS_STATE_WORDS_H
#define MIRN_INSIGHT_METRICS_STATE_WORDS_H

#include <cstddef>
#include <string>
#include <vector>

#include "ServiceObject.h"

namespace insight {

/// Every word that a state may have, "unknown" the last: whatever is none of the others is that.
class StateWords {
 public:
  StateWords() : StateWords(std::vector<std::string>()) {}
  /// Without the words for what is not known.
  explicit StateWords(std::vector<std::string> known);

  const std::vector<std::string>& all() const { return m_all; }

  /// The place of a word among all.
  std::size_t placeOf(const std::wstring& word) const;

 private:
  std::vector<std::string> m_all;
};

/// The states of a machine's objects, and the usages of its disks.
struct MachineWords {
  StateWords service;
  StateWords array;
  StateWords volume;
  StateWords disk;
  StateWords usage;
};

/// As a plug-in's description tells, `ovra::described_plugin_1::describe`.
MachineWords machineWordsOf(const ovra::data_transfer::ServiceObject& description);

}  // namespace insight

#endif
