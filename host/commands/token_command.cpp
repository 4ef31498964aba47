#include "commands/token_command.h"

#include <optional>

#include "commands/command_arguments.h"
#include "identity/token_table.h"
#include "options.h"

namespace host {

namespace {

namespace po = boost::program_options;

using Words = std::vector<std::string>;

const char kUsage[] =
    "Usage: mirn-host token add NAME ROLE [options]\n"
    "       mirn-host token list [options]\n"
    "       mirn-host token revoke NAME [options]\n"
    "Adds, lists and revokes the tokens by which a host lets clients in; a running host\n"
    "follows within two seconds. ROLE is observe, operate or administer. `add` prints the\n"
    "token, which is kept nowhere else; `list` prints name, role and time of each.\n\n";

void add(const TokenTable& table, const Words& words, std::ostream& out) {
  const auto role = roleOf(words[1]);
  if (!role) throw UsageError("the role is not observe, operate or administer");
  out << table.add(words[0], *role) << '\n';
}

void list(const TokenTable& table, std::ostream& out, std::ostream& errors) {
  const TokenLines lines = table.read();
  for (const TokenEntry& entry : lines.entries()) {
    out << entry.name << ' ' << toText(entry.role) << ' ' << entry.created << '\n';
  }
  for (const TokenFault& fault : lines.faults()) {
    errors << "mirn-host: line " << fault.line << " lets nobody in: " << fault.reason << '\n';
  }
}

/// The words behind the verb when it is `verb` with that many.
std::optional<Words> behind(const std::string& verb, std::size_t count, const Words& words) {
  if (words.size() != count + 1 || words.front() != verb) return {};
  return Words(words.begin() + 1, words.end());
}

void run(const TokenTable& table, const Words& words, std::ostream& out, std::ostream& errors) {
  if (const auto named = behind("add", 2, words)) return add(table, *named, out);
  if (behind("list", 0, words)) return list(table, out, errors);
  if (const auto named = behind("revoke", 1, words)) return table.revoke(named->front());
  throw UsageError("it is \"token add NAME ROLE\", \"token list\" or \"token revoke NAME\"");
}

}  // namespace

void runTokenCommand(const Words& arguments, std::ostream& out, std::ostream& errors) {
  std::string tokenFile;
  std::string configurationFile;
  bool help = false;
  Words words;
  po::options_description shown("Options");
  shown.add_options()  //
      ("token-file", po::value(&tokenFile)->value_name("FILE"),
       ("the first token's file, beside which the table stands; otherwise " + defaultTokenFileText())
           .c_str())  //
      ("config", po::value(&configurationFile)->value_name("FILE"),
       "the host's configuration, which may name that file")  //
      ("help", po::bool_switch(&help), "show this and exit");
  po::options_description all;
  all.add(shown).add_options()("word", po::value(&words));
  po::positional_options_description positions;
  positions.add("word", -1);
  readArguments(arguments, all, positions);
  if (help) {
    out << kUsage << shown;
    return;
  }
  const Options configured = configuredOptions(configurationFile);  // wrong ones are told, needed or not
  if (tokenFile.empty()) tokenFile = configured.tokenFile;
  run(TokenTable(tokenFile.empty() ? defaultTokenFile() : tokenFile), words, out, errors);
}

}  // namespace host
