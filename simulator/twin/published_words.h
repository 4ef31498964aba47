#ifndef MIRN_SIMULATOR_TWIN_PUBLISHED_WORDS_H
#define MIRN_SIMULATOR_TWIN_PUBLISHED_WORDS_H

#include <string_view>

#include "model/machine.h"
#include "model/words.h"

/// Words that the plug-in publishes and no scenario has, since a machine derives what they stand for.
namespace simulator {

template <>
const std::initializer_list<Word<VolumeState>>& wordsOf<VolumeState>();
template <>
const std::initializer_list<Word<DiskUsage>>& wordsOf<DiskUsage>();

std::string_view publishedState(const Machine& machine, const Volume& volume);
std::string_view publishedState(const EndDevice& disk);
/// In percent.
std::uint64_t publishedProgress(const Machine& machine, const Volume& volume);

}  // namespace simulator

#endif
