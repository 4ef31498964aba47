#ifndef MIRN_TESTS_INSIGHT_MACHINE_RANDOM_MACHINE_H
#define MIRN_TESTS_INSIGHT_MACHINE_RANDOM_MACHINE_H

#include <cstdint>
#include <random>
#include <string>

#include "model/machine.h"

/// Small machines at random, from one seed, the same on every platform: some sound, some after things have
/// befallen them, some at work.
class RandomMachine {
 public:
  explicit RandomMachine(std::uint32_t seed) : m_random(seed) {}

  simulator::Machine next();

 private:
  std::size_t below(std::size_t count) { return m_random() % count; }
  bool oneIn(std::size_t count) { return below(count) == 0; }

  std::string scenario();
  void addDisk(const std::string& controller, bool isSpare);
  void addArray(const std::string& controller);
  void addVolumes(const std::string& array, std::size_t disks);
  void befall(simulator::Machine& machine);
  void befallDisk(simulator::Machine& machine);
  void beginWork(simulator::Machine& machine);

  std::mt19937 m_random;
  std::string m_devices;
  std::string m_arrays;
  std::string m_volumes;
  std::size_t m_diskCount = 0;
  std::size_t m_arrayCount = 0;
  std::size_t m_volumeCount = 0;
};

#endif
