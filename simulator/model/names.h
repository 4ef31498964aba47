#ifndef MIRN_SIMULATOR_MODEL_NAMES_H
#define MIRN_SIMULATOR_MODEL_NAMES_H

#include <cstddef>
#include <string>
#include <string_view>

#include "model/machine.h"

namespace simulator {

constexpr std::size_t kMaxVolumeNameSize = 16;

/// 1 to 16 printable ASCII characters, no backslash, no blank at the start.
bool isVolumeName(std::string_view name);

/// The volume of that name, or null.
const Volume* findVolumeByName(const Machine& machine, std::string_view name);

/// A name for the array of a new volume that no array has.
std::string nameOfNewArray(const Machine& machine);

/// An id for a new object that no object has.
std::string newId(const Machine& machine, std::string_view prefix, Handle handle);

}  // namespace simulator

#endif
