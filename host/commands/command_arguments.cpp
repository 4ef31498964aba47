#include "commands/command_arguments.h"

#include "options.h"

namespace host {

namespace po = boost::program_options;

void readArguments(const std::vector<std::string>& arguments, const po::options_description& options,
                   const po::positional_options_description& positions) {
  constexpr auto kStyle = po::command_line_style::allow_long | po::command_line_style::long_allow_adjacent |
                          po::command_line_style::long_allow_next;
  try {
    po::variables_map values;
    po::store(po::command_line_parser(arguments).options(options).positional(positions).style(kStyle).run(),
              values);
    po::notify(values);
  } catch (const po::error& error) {
    throw UsageError(error.what());
  }
}

}  // namespace host
