#include "commands/usual_verb.h"

#include <algorithm>

#include "commands/global_options.h"

namespace mirnctl {

namespace {

/// What is meant by a noun alone: the first of these that it has.
constexpr const char* kUsual[] = {"list", "show", "get"};

using Words = std::vector<std::string>;

bool isOption(const std::string& word) { return !word.empty() && word.front() == '-'; }

bool takesNextWord(const std::string& name) {
  const GlobalOption* const option = globalOption(name);
  return option != nullptr && option->value != OptionValue::kNone;
}

Words::iterator firstThatIsNoOption(Words& words) {
  auto word = words.begin();
  while (word != words.end() && isOption(*word)) {
    if (takesNextWord(*word) && word + 1 != words.end()) ++word;
    ++word;
  }
  return word;
}

bool isNoun(const std::vector<Command>& commands, const std::string& word) {
  return std::any_of(commands.begin(), commands.end(),
                     [&word](const Command& each) { return each.noun == word; });
}

const Command* usualOf(const std::vector<Command>& commands, const std::string& noun) {
  for (const char* verb : kUsual) {
    if (const Command* const usual = find(commands, noun, verb)) return usual;
  }
  return nullptr;
}

bool hasPlaces(const Command& command) {
  return std::any_of(command.fields.begin(), command.fields.end(),
                     [&command](const Field& field) { return hasPlace(command, field); });
}

}  // namespace

Words withVerb(const std::vector<Command>& commands, Words words) {
  const auto noun = firstThatIsNoOption(words);
  if (noun == words.end() || !isNoun(commands, *noun)) return words;
  const auto next = noun + 1;
  const bool isLast = next == words.end();
  if (!isLast && next->rfind("--", 0) == 0 && find(commands, *noun, next->substr(2)) != nullptr) {
    next->erase(0, 2);
    return words;
  }
  const bool hasVerb = std::any_of(next, words.end(), [&](const std::string& word) {
    return word == "-h" || word == "--help" || find(commands, *noun, word) != nullptr;
  });
  const Command* const usual = usualOf(commands, *noun);
  if (hasVerb || usual == nullptr) return words;
  if (!isLast && !isOption(*next) && !hasPlaces(*usual)) return words;  // a verb that there is not
  words.insert(next, usual->verb);
  return words;
}

}  // namespace mirnctl
