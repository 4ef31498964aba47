#ifndef MIRN_SIMULATOR_MODEL_WORDS_H
#define MIRN_SIMULATOR_MODEL_WORDS_H

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "model/codes.h"

namespace simulator {

template <class Code>
struct Word {
  Code code;
  std::string_view word;
};

/// The words of an enumeration in a scenario, one row a code; one specialisation for each enumeration.
template <class Code>
const std::initializer_list<Word<Code>>& wordsOf();

template <class Code>
std::string_view toWord(Code code) {
  for (const auto& row : wordsOf<Code>()) {
    if (row.code == code) return row.word;
  }
  return "";
}

template <class Code>
std::optional<Code> fromWord(std::string_view word) {
  for (const auto& row : wordsOf<Code>()) {
    if (row.word == word) return row.code;
  }
  return std::nullopt;
}

template <>
const std::initializer_list<Word<RaidLevel>>& wordsOf<RaidLevel>();
template <>
const std::initializer_list<Word<StripSize>>& wordsOf<StripSize>();
template <>
const std::initializer_list<Word<ControllerType>>& wordsOf<ControllerType>();
template <>
const std::initializer_list<Word<DeviceType>>& wordsOf<DeviceType>();
template <>
const std::initializer_list<Word<DiskType>>& wordsOf<DiskType>();
template <>
const std::initializer_list<Word<DiskState>>& wordsOf<DiskState>();
template <>
const std::initializer_list<Word<Presence>>& wordsOf<Presence>();
template <>
const std::initializer_list<Word<LinkSpeed>>& wordsOf<LinkSpeed>();
template <>
const std::initializer_list<Word<X8Role>>& wordsOf<X8Role>();
template <>
const std::initializer_list<Word<WriteCache>>& wordsOf<WriteCache>();
template <>
const std::initializer_list<Word<CachePolicy>>& wordsOf<CachePolicy>();
template <>
const std::initializer_list<Word<RwhPolicy>>& wordsOf<RwhPolicy>();
template <>
const std::initializer_list<Word<WorkKind>>& wordsOf<WorkKind>();

}  // namespace simulator

#endif
