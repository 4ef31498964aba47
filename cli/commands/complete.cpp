#include "commands/complete.h"

#include <algorithm>
#include <boost/algorithm/string/case_conv.hpp>
#include <cctype>
#include <optional>
#include <set>

#include "answers/record.h"
#include "answers/text_width.h"
#include "arguments/request_of.h"
#include "commands/global_options.h"
#include "exit_status.h"

namespace mirnctl {

namespace json = boost::json;

namespace {

constexpr std::chrono::seconds kShortPatience{1};  // somebody waits for the next letter
constexpr const char* kAnyFile = ":";

struct Candidate {
  std::string word, meaning;
};

using Candidates = std::vector<Candidate>;

/// What the finished words of a line say.
struct Line {
  std::string noun;
  const Command* command = nullptr;
  std::size_t placesTaken = 0;
  Arguments arguments;
  std::set<std::string> options;  ///< Those that are there.
  std::string open;               ///< The option whose value comes next; empty: none.
  Settings settings;
};

const Field* fieldOf(const Command* command, const std::string& option) {
  if (command == nullptr) return nullptr;
  const auto& fields = command->fields;
  const auto found = std::find_if(fields.begin(), fields.end(), [&option](const Field& field) {
    return field.place != Place::kPath && optionOf(field.name) == option;
  });
  return found == fields.end() ? nullptr : &*found;
}

const Field* placeOf(const Command& command, std::size_t number) {
  for (const Field& field : command.fields) {
    if (hasPlace(command, field) && number-- == 0) return &field;
  }
  return nullptr;
}

class Completion {
 public:
  Completion(const ApiDocument& document, const Surroundings& surroundings, const ServiceMaker& makeService)
      : m_document(document),
        m_surroundings(surroundings),
        m_makeService(makeService),
        m_commands(commandsOf(document)) {}

  Candidates candidatesFor(const std::vector<std::string>& words) {
    for (std::size_t place = 0; place + 1 < words.size(); ++place) take(words[place]);
    const std::string last = words.empty() ? std::string() : words.back();
    if (!m_line.open.empty()) return valuesOf(m_line.open, last);
    const std::size_t equals = last.find('=');
    const bool isOption = last.compare(0, 1, "-") == 0;
    if (isOption && equals != std::string::npos) {
      return behind(last.substr(0, equals + 1), valuesOf(last.substr(0, equals), last.substr(equals + 1)));
    }
    if (isOption) return options(true);
    if (m_line.command == nullptr) return names();
    if (const Field* const field = placeOf(*m_line.command, m_line.placesTaken))
      return valuesOf(*field, last);
    return m_line.command->rest.empty() ? options(false) : Candidates();
  }

 private:
  void take(const std::string& word) {
    if (!m_line.open.empty()) return takeValue(std::exchange(m_line.open, {}), word);
    if (word.compare(0, 2, "--") == 0) return takeOption(word);
    if (m_line.command == nullptr) {
      m_line.command = find(m_commands, m_line.noun, word);
      if (m_line.command == nullptr && m_line.noun.empty()) m_line.noun = word;
      return;
    }
    if (const Field* const field = placeOf(*m_line.command, m_line.placesTaken++))
      m_line.arguments[field->name] = word;
  }

  void takeOption(const std::string& word) {
    const std::size_t equals = word.find('=');
    const std::string name = word.substr(0, equals);
    m_line.options.insert(name);
    const GlobalOption* const global = globalOption(name);
    if (global != nullptr && global->value == OptionValue::kNone) return;
    if (equals != std::string::npos) {
      takeValue(name, word.substr(equals + 1));
    } else if (global != nullptr || fieldOf(m_line.command, name) != nullptr) {
      m_line.open = name;
    }
  }

  void takeValue(const std::string& option, const std::string& value) {
    if (const GlobalOption* const global = globalOption(option)) return global->set(m_line.settings, value);
    if (const Field* const field = fieldOf(m_line.command, option)) m_line.arguments[field->name] = value;
  }

  /// Of nouns, of those that stand alone, or of the verbs of the noun that is there.
  Candidates names() const {
    Candidates found;
    std::set<std::string> seen;
    for (const Command& command : m_commands) {
      if (m_line.noun.empty() && !command.noun.empty()) {
        if (seen.insert(command.noun).second) found.push_back({command.noun, "of " + command.noun});
      } else if (command.noun == m_line.noun) {
        found.push_back({command.verb, command.summary});
      }
    }
    return found;
  }

  Candidates options(bool withGlobal) const {
    Candidates found;
    const auto add = [&](const std::string& name, const std::string& help) {
      if (m_line.options.count(name) == 0) found.push_back({name, help});
    };
    if (m_line.command != nullptr) {
      for (const Field& field : m_line.command->fields) {
        if (!hasPlace(*m_line.command, field)) add(optionOf(field.name), helpOf(field));
      }
    }
    if (!withGlobal) return found;
    for (const GlobalOption& option : globalOptions()) add(option.name, option.help);
    add("--help", "What it does");
    return found;
  }

  Candidates valuesOf(const std::string& option, const std::string& typed) {
    if (const Field* const field = fieldOf(m_line.command, option)) return valuesOf(*field, typed);
    const GlobalOption* const global = globalOption(option);
    switch (global == nullptr ? OptionValue::kNone : global->value) {
      case OptionValue::kWord:
        return wordsOf(global->words, typed);
      case OptionValue::kFile:
        return {{kAnyFile, ""}};
      case OptionValue::kProfile:
        return wordsOf(profileNames(m_surroundings), typed);
      case OptionValue::kColumn:
        return typed.compare(0, 1, "-") == 0 ? behind("-", columns()) : columns();
      case OptionValue::kColumns:
        return behindCommas(typed, columns());
      case OptionValue::kNone:
      case OptionValue::kText:
        break;
    }
    return {};
  }

  Candidates valuesOf(const Field& field, const std::string& typed) {
    Candidates found;
    const std::size_t comma = typed.rfind(',');
    const bool isList = field.kind == ValueKind::kList;
    const std::string part = isList && comma != std::string::npos ? typed.substr(comma + 1) : typed;
    const std::string type = typeOf(field, m_line.arguments);
    if (!field.words.empty()) {
      found = wordsOf(field.words, part);
    } else if (field.kind == ValueKind::kBoolean) {
      found = {{"true", ""}, {"false", ""}};
    } else if (!type.empty()) {
      found = objects(type, part);
    }
    return isList ? behindCommas(typed, found) : found;
  }

  /// Words may be typed in either case: who begins in small letters goes on in them.
  static Candidates wordsOf(const std::vector<std::string>& words, const std::string& typed) {
    const bool isSmall =
        std::any_of(typed.begin(), typed.end(), [](unsigned char c) { return std::islower(c) != 0; });
    Candidates found;
    for (const std::string& word : words) {
      const bool isAsTyped = word.compare(0, typed.size(), typed) == 0;
      found.push_back({isSmall && !isAsTyped ? boost::algorithm::to_lower_copy(word) : word, ""});
    }
    return found;
  }

  Candidates columns() const {
    Candidates found;
    if (m_line.command == nullptr || m_line.command->operation == nullptr) return found;
    for (const AnswerField& field : m_line.command->operation->answer)
      found.push_back({field.name, field.help});
    return found;
  }

  static Candidates behind(const std::string& text, Candidates candidates) {
    for (Candidate& each : candidates) {
      if (each.word != kAnyFile) each.word = text + each.word;
    }
    return candidates;
  }

  /// The next of a list with commas between; what is there already is not offered again.
  static Candidates behindCommas(const std::string& typed, Candidates candidates) {
    const std::size_t comma = typed.rfind(',');
    if (comma == std::string::npos) return candidates;
    const std::vector<std::string> there = partsOf(typed.substr(0, comma));
    candidates.erase(std::remove_if(candidates.begin(), candidates.end(),
                                    [&there](const Candidate& each) {
                                      return std::find(there.begin(), there.end(), each.word) != there.end();
                                    }),
                     candidates.end());
    return behind(typed.substr(0, comma + 1), std::move(candidates));
  }

  /// By their names; one whose id alone begins as what is typed by that.
  Candidates objects(const std::string& type, const std::string& typed) {
    const Destination destination = destinationOf(m_line.settings.directions, m_surroundings);
    const std::unique_ptr<IService> service = m_makeService(destination, kShortPatience);
    ObjectNames objects(m_document, *service);
    const Operation* const list = m_document.find(type + "s", "list");
    Candidates found;
    for (const ObjectNames::Named& each : objects.allOf(type)) {
      for (const std::string& word : {each.name, each.id}) {
        if (word.compare(0, typed.size(), typed) != 0) continue;
        found.push_back({word, meaningOf(*each.record, word, list)});
        break;
      }
    }
    return found;
  }

  /// What the list's table tells besides.
  static std::string meaningOf(const json::object& record, const std::string& word, const Operation* list) {
    std::string meaning;
    if (list == nullptr) return meaning;
    for (const std::string& column : list->columns) {
      const json::value* const value = memberOf(record, column);
      if (value == nullptr || column == "id" || plainText(*value) == word) continue;
      const auto field = std::find_if(list->answer.begin(), list->answer.end(),
                                      [&column](const AnswerField& each) { return each.name == column; });
      const std::string unit = field == list->answer.end() ? std::string() : field->unit;
      meaning += (meaning.empty() ? "" : ", ") + textForPeople(*value, unit);
    }
    return meaning;
  }

  const ApiDocument& m_document;
  const Surroundings& m_surroundings;
  const ServiceMaker& m_makeService;
  const std::vector<Command> m_commands;
  Line m_line;
};

}  // namespace

void complete(const ApiDocument& document, const Surroundings& surroundings, const ServiceMaker& makeService,
              const std::vector<std::string>& words, Terminal& terminal) {
  try {
    const std::string last = words.empty() ? std::string() : words.back();
    for (const Candidate& each : Completion(document, surroundings, makeService).candidatesFor(words)) {
      const bool fits = each.word == kAnyFile || each.word.compare(0, last.size(), last) == 0;
      if (!fits) continue;
      terminal.out << printable(each.word);
      if (!each.meaning.empty()) terminal.out << '\t' << printable(each.meaning);
      terminal.out << '\n';
    }
    terminal.out << std::flush;
  } catch (const std::exception&) {
    // Somebody is typing: what is wrong is told when the line is sent.
  }
}

}  // namespace mirnctl
