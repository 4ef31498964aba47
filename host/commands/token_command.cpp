#include "commands/token_command.h"

#include <boost/program_options.hpp>
#include <optional>

#include "identity/token_table.h"
#include "options.h"

namespace host {

namespace {

namespace po = boost::program_options;

using Words = std::vector<std::string>;

const char kUsage[] =
    "Usage: mirn-host token add NAME ROLE [--token-file FILE]\n"
    "       mirn-host token list [--token-file FILE]\n"
    "       mirn-host token revoke NAME [--token-file FILE]\n"
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
  bool help = false;
  Words words;
  po::options_description shown("Options");
  shown.add_options()  //
      ("token-file", po::value(&tokenFile)->value_name("FILE"),
       ("the first token's file, beside which the table stands; otherwise " + defaultTokenFileText())
           .c_str())  //
      ("help", po::bool_switch(&help), "show this and exit");
  po::options_description all;
  all.add(shown).add_options()("word", po::value(&words));
  po::positional_options_description positions;
  positions.add("word", -1);
  constexpr auto kStyle = po::command_line_style::allow_long | po::command_line_style::long_allow_adjacent |
                          po::command_line_style::long_allow_next;
  try {
    po::variables_map values;
    po::store(po::command_line_parser(arguments).options(all).positional(positions).style(kStyle).run(),
              values);
    po::notify(values);
  } catch (const po::error& error) {
    throw UsageError(error.what());
  }
  if (help) {
    out << kUsage << shown;
    return;
  }
  run(TokenTable(tokenFile.empty() ? defaultTokenFile() : tokenFile), words, out, errors);
}

}  // namespace host
