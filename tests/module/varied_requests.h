#ifndef MIRN_TESTS_MODULE_VARIED_REQUESTS_H
#define MIRN_TESTS_MODULE_VARIED_REQUESTS_H

#include <string>
#include <vector>

#include "module/request.h"
#include "scripted_library/scripted_machine.h"

/// A machine with every kind of object, and requests on it that bring every kind of argument to the library.
/// None of them needs another one to go ahead of it, nor the library to do what it is told.

/// The small machine, and: a degraded RAID 5 volume on the Lyx controller, an empty array of three SATA
/// disks with one that may hold a journal, a disk that may be pulled, a device that is no disk, and a
/// controller without a RAID engine.
ScriptedMachine variedMachine();

struct VariedRequest {
  std::string name;
  Request request;
};

/// Those of all branches of the path tree, with the requests on volumes below.
std::vector<VariedRequest> variedRequests();

std::vector<VariedRequest> variedCreations();      ///< Of volumes, in an array and from disks.
std::vector<VariedRequest> variedVolumeChanges();  ///< All else that is done to volumes.

// Its objects, beside those of the small machine.
namespace varied {

constexpr VEX_HANDLE kPlainController = 13;
constexpr VEX_HANDLE kParityMember1 = 28;
constexpr VEX_HANDLE kParityMember2 = 29;
constexpr VEX_HANDLE kParityMember3 = 30;
constexpr VEX_HANDLE kParityArray = 42;
constexpr VEX_HANDLE kEmptyArray = 43;
constexpr VEX_HANDLE kParityVolume = 53;
constexpr VEX_HANDLE kEmptyMember1 = 101;
constexpr VEX_HANDLE kEmptyMember2 = 102;
constexpr VEX_HANDLE kEmptyMember3 = 103;
constexpr VEX_HANDLE kJournal = 104;
constexpr VEX_HANDLE kNoDisk = 105;

}  // namespace varied

#endif
