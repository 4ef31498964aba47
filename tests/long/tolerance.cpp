#include <chrono>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <random>
#include <string>

#include "insight/machine/random_machine.h"
#include "insight/machine/served_simulation.h"
#include "insight/machine/tolerance_proof.h"
#include "scenario/scenario.h"

// Holds what is claimed of the volumes of as many random machines as asked against the machines themselves.
// Prints the seed, a machine of which too much is claimed, and what was seen. Its arguments are the number of
// machines and the seed.

int main(int count, char** arguments) try {
  const unsigned long machines = count > 1 ? std::stoul(arguments[1]) : 5000;
  const auto seed = static_cast<std::uint32_t>(count > 2 ? std::stoul(arguments[2]) : std::random_device{}());
  std::cout << machines << " machines from seed " << seed << std::endl;
  const auto begin = std::chrono::steady_clock::now();
  const LoadedModule module(MIRN_TEST_MODULE);
  ServedSimulation served(module);
  RandomMachine random(seed);
  ToleranceProof proof;
  for (unsigned long number = 0; number < machines; ++number) {
    const std::string scenario = simulator::writeScenario(random.next());
    served.load(scenario);
    const std::string fault = proof.judge(scenario, served.view());
    if (fault.empty()) continue;
    std::cout << "machine " << number << ": " << fault << "\n" << scenario << std::endl;
    return EXIT_FAILURE;
  }
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
  for (const auto& [what, times] : proof.tally()) std::cout << what << ": " << times << "\n";
  std::cout << machines << " machines, of which nothing wrong is claimed, in " << time.count() << " s"
            << std::endl;
  return EXIT_SUCCESS;
} catch (const std::exception& error) {
  std::cerr << error.what() << std::endl;
  return EXIT_FAILURE;
}
