#ifndef MIRN_TESTS_INSIGHT_MACHINE_RANDOM_CHANGE_H
#define MIRN_TESTS_INSIGHT_MACHINE_RANDOM_CHANGE_H

#include <cstdint>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "actions/candidates.h"
#include "actions/operation.h"
#include "ServiceObject.h"
#include "view/machine_view.h"

/// A change that a client may ask for.
struct AskedAtRandom {
  const insight::Operation* operation;
  std::vector<std::wstring> segments;
  ovra::data_transfer::ServiceObject body;
};

/// Changes at random, from one seed, the same on every platform: each on an object for which it is meant,
/// with arguments that are offered for it, so that most go.
class RandomChange {
 public:
  /// Those of `operations`, which outlive this, that change the machine.
  RandomChange(std::uint32_t seed, const std::vector<insight::Operation>& operations);

  /// Nothing where the machine had no object for any of the operations that were drawn.
  std::optional<AskedAtRandom> on(const insight::MachineView& machine);

 private:
  using Texts = std::vector<std::wstring>;

  std::size_t below(std::size_t count) { return m_random() % count; }
  bool oneIn(std::size_t count) { return below(count) == 0; }
  const std::wstring& oneOf(const Texts& texts) { return texts[below(texts.size())]; }

  std::optional<AskedAtRandom> fill(const insight::Operation& operation, const std::wstring& id);
  bool isWanted(const insight::Operation& operation, const insight::OperationField& field,
                const std::wstring& id);
  /// False where nothing may stand there.
  bool put(const insight::OperationField& field, const insight::CandidateQuestion& question);
  bool putDisks(const insight::OperationField& field, const insight::CandidateQuestion& question);
  bool putText(const insight::OperationField& field, const insight::CandidateQuestion& question);
  Texts values(const insight::CandidateQuestion& question);
  std::wstring size(const insight::CandidateQuestion& question);
  std::size_t diskCount(const insight::CandidateQuestion& question);

  const insight::MachineView* m_machine = nullptr;
  std::mt19937 m_random;
  std::vector<const insight::Operation*> m_operations;
  std::vector<const insight::Operation*> m_rare;  ///< For which few machines have an object.
  unsigned m_names = 0;
  std::map<std::wstring, std::wstring> m_given;  // as questions take it
  ovra::data_transfer::ServiceObject m_body;
};

#endif
