#ifndef MIRN_TESTS_SIMULATOR_REFERENCE_WALK_H
#define MIRN_TESTS_SIMULATOR_REFERENCE_WALK_H

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "simulator/reference/machine.h"
#include "simulator/reference/tally.h"

namespace reference {

/// Does one random thing after another to the library and to the reference machine, and tells where they
/// part. Owns the library from its beginning to its end: one walk at a time.
class Walk {
 public:
  /// Counts what it sees in `tally`, which outlives it.
  Walk(std::uint32_t seed, Tally& tally);
  ~Walk();
  Walk(const Walk&) = delete;
  Walk& operator=(const Walk&) = delete;

  /// Does the next thing. Returns what differs afterwards, or nothing.
  std::string step();

  /// What the last steps were, in words.
  std::string story() const;

 private:
  struct Outcome {
    Status library;
    Status reference;
  };
  static const Outcome kSkipped;  ///< nothing was done
  struct Action {
    std::string name;
    std::function<Outcome(Walk&)> act;
  };
  static const std::vector<Action> kActions;

  void adoptHandles();

  // Drawing.
  std::uint32_t number(std::uint32_t limit) { return static_cast<std::uint32_t>(m_random() % limit); }
  bool oneIn(std::uint32_t count) { return number(count) == 0; }
  Handle anyDisk();
  Handle anyArray();
  Handle anyVolume();
  Handle anyController();
  Handle diskThat(const std::function<bool(const Disk&)>& suits);
  Handle freeDisk();
  Handle member();
  Handle diskWithPassword();
  Handle newDiskOfMigration();
  Handle volumeIn(std::uint32_t state);
  Handle volumeAt(std::uint32_t level);
  Handle freeDiskFor(Handle array);
  std::vector<Handle> freeDisks(std::uint32_t count);
  std::vector<Handle> freeDisksFor(Handle array, std::uint32_t count);
  Handle arrayOf(Handle volume) const;
  Wish wish(Handle array);
  std::uint32_t countFor(std::uint32_t level);
  std::uint32_t level();
  std::uint32_t strip();
  std::uint64_t sizeMiB();

  // Doing.
  Outcome befall(Status (*incident)(const char*), Status (Machine::*rule)(Handle), Handle disk);
  Outcome onDisk(Status (*action)(Handle), Status (Machine::*rule)(Handle), Handle disk);
  Outcome onVolume(Status (*action)(Handle), Status (Machine::*rule)(Handle), Handle volume);
  Outcome pass();
  Outcome insertBlank();
  Outcome unlock();
  Outcome removeAtPhy();
  Outcome addDisks();
  Outcome create();
  Outcome createFromDisks(bool hasSource);
  Outcome modify(std::uint32_t mostDisks);
  Outcome reload();
  Born born(Status status, const std::string& volumeName) const;
  std::string idOf(Handle disk) const;
  void note(const std::string& text);

  // Comparing.
  std::string compare();
  std::string compareDisks() const;
  std::string compareArrays() const;
  std::string compareVolumes() const;
  std::string comparePorts() const;
  std::string comparePhys() const;
  std::string compareControllers() const;
  std::string compareLevels() const;
  std::string compareWake();
  void count();
  const Disk& holderOf(int bay) const { return m_machine.disks.at(m_holders.at(bay)); }

  Tally& m_tally;
  Machine m_machine;
  std::mt19937 m_random;
  Handle m_session = 0;
  Handle m_event = 0;
  std::map<int, Handle> m_holders;   ///< bay to the device that was in it last
  std::map<int, Handle> m_phys;      ///< of the bays
  std::map<Handle, int> m_ports;     ///< of the bays
  std::map<Handle, int> m_farPorts;  ///< to which they are connected
  std::vector<std::string> m_story;
  std::uint32_t m_blankDisks = 0;
};

}  // namespace reference

#endif
