#ifndef MIRN_TESTS_SCRIPTED_LIBRARY_LARGE_MACHINE_H
#define MIRN_TESTS_SCRIPTED_LIBRARY_LARGE_MACHINE_H

#include <cstddef>

#include "scripted_library/scripted_machine.h"

/// A machine as large as wished, for measurements. One RAID engine; SATA controllers of 256 disks each, and a
/// further one or two without any. Each disk has a phy, a port of its own and one of its controller. Every
/// eight disks in a row form an array of two volumes; what is left over is free. Every text fills its field.
namespace large_machine {

constexpr std::size_t kDisksPerController = 256;
constexpr std::size_t kDisksPerArray = 8;

/// `disks`: at most 100,000.
ScriptedMachine make(std::size_t disks);

/// One array of two volumes for each two of `volumes`, and little else.
ScriptedMachine makeWithVolumes(std::size_t volumes);

}  // namespace large_machine

#endif
