// Writes scenarios: of a large machine, for load tests, and of the machine that a bundle tells of.

#include <charconv>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "bundle/bundle_files.h"
#include "scenario/generator.h"
#include "scenario/scenario.h"
#include "twin/twin.h"

namespace {

constexpr char kHelp[] =
    "Usage: mirn-scenario --devices N [--output FILE]\n"
    "       mirn-scenario --from-bundle FILE [--output FILE]\n"
    "\n"
    "Writes a scenario for the simulated storage library: a machine of N disks, with controllers,\n"
    "arrays, volumes, spares and ports to match, where the same N gives the same file; or a machine\n"
    "that answers as the one did that a bundle was made of. What had to be assumed of that one, and\n"
    "what comes out otherwise, is told on standard error.\n"
    "\n"
    "  --devices N         number of disks, from 1 to 1000000\n"
    "  --from-bundle FILE  a bundle, or the folder that it was unpacked to\n"
    "  --output FILE       where to write it; standard output when left out\n"
    "  --help              show this and end\n"
    "  --version           show the version and end\n";

constexpr int kWrongUse = 2;

struct Options {
  std::uint32_t devices = 0;
  std::string bundle;
  std::string output;
};

bool parseDevices(std::string_view text, std::uint32_t& devices) {
  const auto result = std::from_chars(text.data(), text.data() + text.size(), devices);
  return result.ec == std::errc() && result.ptr == text.data() + text.size() && devices > 0 &&
         devices <= simulator::kMaxGeneratedDevices;
}

bool parse(int argc, char** argv, Options& options) {
  for (int i = 1; i + 1 < argc; i += 2) {
    const std::string_view option = argv[i];
    if (option == "--devices") {
      if (!parseDevices(argv[i + 1], options.devices)) return false;
    } else if (option == "--from-bundle") {
      options.bundle = argv[i + 1];
    } else if (option == "--output") {
      options.output = argv[i + 1];
    } else {
      return false;
    }
  }
  return argc % 2 == 1 && (options.devices > 0) != !options.bundle.empty();
}

simulator::Machine machineOfBundle(const std::string& path) {
  simulator::Twin twin = simulator::twinOf(simulator::answersInBundle(path));
  for (const std::string& each : twin.assumptions) std::cerr << "mirn-scenario: assumed: " << each << "\n";
  for (const std::string& each : twin.differences) std::cerr << "mirn-scenario: different: " << each << "\n";
  return std::move(twin.machine);
}

int write(const Options& options) {
  const simulator::Machine machine =
      options.bundle.empty() ? simulator::generateMachine(options.devices) : machineOfBundle(options.bundle);
  const std::string scenario = simulator::writeScenario(machine);
  if (options.output.empty()) {
    std::cout << scenario << std::flush;
    return std::cout ? 0 : 1;
  }
  std::ofstream file(options.output, std::ios::binary);
  file << scenario << std::flush;
  if (!file) std::cerr << "mirn-scenario: " << options.output << ": cannot be written\n";
  return file ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view first = argc > 1 ? argv[1] : "";
  if (first == "--help") {
    std::cout << kHelp;
    return 0;
  }
  if (first == "--version") {
    std::cout << "mirn-scenario " << MIRN_VERSION << "\n";
    return 0;
  }
  Options options;
  if (!parse(argc, argv, options)) {
    std::cerr << kHelp;
    return kWrongUse;
  }
  try {
    return write(options);
  } catch (const std::runtime_error& error) {  // nothing is written then
    std::cerr << "mirn-scenario: " << options.bundle << ": " << error.what() << "\n";
    return 1;
  }
}
