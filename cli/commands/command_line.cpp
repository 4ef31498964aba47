#include "commands/command_line.h"

#include <algorithm>
#include <CLI/CLI.hpp>
#include <deque>
#include <utility>

#include "answers/text_width.h"
#include "arguments/values.h"
#include "bundle/bundle_service.h"
#include "commands/complete.h"
#include "commands/global_options.h"
#include "commands/usual_verb.h"
#include "exit_status.h"
#include "tick_clock.h"

namespace mirnctl {

namespace {

constexpr char kUsage[] =
    R"(The service is found by --host, MIRN_HOST, a profile in ~/.config/mirn/config, the Unix socket of
a service that runs on this machine, or at 127.0.0.1:8080; its token by --token-file, MIRN_TOKEN_FILE or the profile.)";

/// What the scripts of the shells ask with, which is no command for people.
constexpr char kComplete[] = "complete";

std::string footer() {
  std::string text = kUsage;
  text += "\n\nExit statuses:\n";
  for (const ExitStatusRow& row : kExitStatuses) {
    text += "  " + std::to_string(static_cast<int>(row.status)) + "  " + row.meaning + '\n';
  }
  return text;
}

/// Without what ends options.
std::vector<std::string> wordsToComplete(const std::vector<std::string>& arguments) {
  const bool hasEnd = arguments.size() > 1 && arguments[1] == "--";
  return {arguments.begin() + (hasEnd ? 2 : 1), arguments.end()};
}

/// Null where there is none.
CLI::App* childOf(CLI::App& command, const std::string& name) {
  const auto found = command.get_subcommands([&name](CLI::App* each) { return each->check_name(name); });
  return found.empty() ? nullptr : found.front();
}

/// Takes command lines apart by the commands that there are; the one that is chosen is left with what is
/// typed for it.
class Parser {
 public:
  explicit Parser(const std::vector<Command>& commands) : m_app("Asks a Mirn service.", "mirnctl") {
    m_app.require_subcommand(1);
    m_app.fallthrough();
    m_app.footer(footer());
    m_app.set_version_flag("--version", std::string("mirnctl ") + MIRN_VERSION);
    for (const GlobalOption& option : globalOptions()) add(option);
    for (const Command& command : commands) add(command);
  }

  void parse(std::vector<std::string> arguments) {
    std::reverse(arguments.begin(), arguments.end());  // as CLI11 takes them
    m_app.parse(arguments);
  }

  int explain(const CLI::ParseError& error, Terminal& terminal) const {
    return m_app.exit(error, terminal.out, terminal.err);
  }

  const Settings& settings() const { return m_settings; }
  const Command& chosen() const { return *m_chosen; }

  Typed typed() const {
    Typed typed;
    typed.rest = m_rest;
    for (const auto& [name, option] : m_options) {
      if (option->count() > 0) typed.arguments[name] = option->as<std::string>();
    }
    return typed;
  }

 private:
  void add(const GlobalOption& option) {
    const auto set = [this, &option](const std::string& text) { option.set(m_settings, text); };
    if (option.value == OptionValue::kNone) {
      m_app.add_flag_callback(
          option.name, [set] { set({}); }, option.help);
      return;
    }
    CLI::Option* const added = m_app.add_option_function<std::string>(option.name, set, option.help);
    added->type_name(option.valueName);
    if (!option.words.empty()) added->check(CLI::IsMember(option.words).description(""));
  }

  void add(const Command& command) {
    CLI::App* const added = groupOf(command.noun).add_subcommand(command.verb, command.summary);
    added->footer(command.description);
    m_places.emplace_back();
    std::vector<std::pair<std::string, CLI::Option*>>& options = m_places.back();
    for (const Field& field : command.fields) {
      options.emplace_back(field.name, addField(*added, field, hasPlace(command, field)));
    }
    if (!command.rest.empty()) added->add_option("rest", m_rest, command.rest)->type_name(command.rest);
    added->final_callback([this, &command, &options] {
      m_chosen = &command;
      m_options = options;
    });
  }

  static CLI::Option* addField(CLI::App& command, const Field& field, bool isPlaced) {
    std::string names = optionOf(field.name);
    if (field.place == Place::kPath) {
      names = field.name;
    } else if (isPlaced) {
      names = field.name + ',' + names;
    }
    CLI::Option* const option = command.add_option(names, CLI::callback_t(), helpOf(field));
    return option->required(field.isRequired)->type_name(typeNameOf(field));
  }

  CLI::App& groupOf(const std::string& noun) {
    if (noun.empty()) return m_app;
    if (CLI::App* const there = childOf(m_app, noun)) return *there;
    CLI::App* const group = m_app.add_subcommand(noun, "Of " + noun);
    group->require_subcommand(1);
    return *group;
  }

  CLI::App m_app;
  Settings m_settings;
  std::deque<std::vector<std::pair<std::string, CLI::Option*>>> m_places;  ///< CLI11 keeps their addresses.
  std::vector<std::pair<std::string, CLI::Option*>> m_options;
  std::vector<std::string> m_rest;
  const Command* m_chosen = nullptr;
};

/// How old its answers are, people are told beside them.
std::unique_ptr<IService> openBundle(const Destination& destination, Terminal& terminal) {
  auto bundle = std::make_unique<BundleService>(std::filesystem::u8path(destination.bundle));
  terminal.err << "mirnctl: " << printable(ageText(bundle->madeAt(), currentTicks() / kTicksPerSecond))
               << std::endl;
  return bundle;
}

void run(const Command& command, const Typed& typed, const Start& start) {
  if (command.act) return command.act(start, typed);
  const Destination destination = destinationOf(start.directions, start.surroundings);
  const std::unique_ptr<IService> service = destination.bundle.empty()
                                                ? start.makeService(destination, command.patience)
                                                : openBundle(destination, start.terminal);
  ObjectNames names(start.document, *service);
  command.ask({start.document, destination, *service, names, start.wishes, start.terminal}, typed);
}

void tell(const Failure& failure, Terminal& terminal) {
  terminal.err << "mirnctl: " << failure.what() << '\n';
  if (!failure.advice().empty()) terminal.err << "  " << failure.advice() << '\n';
  terminal.err << std::flush;
}

}  // namespace

ExitStatus runCommand(const std::vector<std::string>& arguments, const ApiDocument& document,
                      const Surroundings& surroundings, const ServiceMaker& makeService, Terminal& terminal) {
  if (!arguments.empty() && arguments.front() == kComplete) {
    complete(document, surroundings, makeService, wordsToComplete(arguments), terminal);
    return ExitStatus::kDone;
  }
  try {
    const std::vector<Command> commands = commandsOf(document);
    Parser parser(commands);
    try {
      parser.parse(withVerb(commands, arguments));
    } catch (const CLI::ParseError& error) {
      return parser.explain(error, terminal) == 0 ? ExitStatus::kDone : ExitStatus::kUsage;
    }
    Wishes wishes = parser.settings().wishes;
    wishes.presentation.screen = terminal.screen;
    run(parser.chosen(), parser.typed(),
        {document, commands, parser.settings().directions, surroundings, makeService, wishes, terminal});
    return terminal.out.good() ? ExitStatus::kDone : ExitStatus::kInternal;
  } catch (const Failure& failure) {
    tell(failure, terminal);
    return failure.status();
  } catch (const std::exception& failure) {
    tell(Failure(ExitStatus::kInternal, failure.what()), terminal);
    return ExitStatus::kInternal;
  }
}

}  // namespace mirnctl
