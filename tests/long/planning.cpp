#include <chrono>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <random>
#include <string>

#include "insight/machine/plan_proof.h"
#include "insight/machine/random_machine.h"
#include "scenario/scenario.h"

// Holds plans for as many random machines as asked against what the changes then do. Prints the seed, a
// machine that a plan is wrong for, and what was seen. Its arguments are the number of machines and the seed.

int main(int count, char** arguments) try {
  const unsigned long machines = count > 1 ? std::stoul(arguments[1]) : 20000;
  const auto seed = static_cast<std::uint32_t>(count > 2 ? std::stoul(arguments[2]) : std::random_device{}());
  std::cout << machines << " machines from seed " << seed << std::endl;
  const auto begin = std::chrono::steady_clock::now();
  const LoadedModule module(MIRN_TEST_MODULE);
  ServedSimulation served(module);
  RandomMachine random(seed);
  PlanProof proof(served, seed);
  for (unsigned long number = 0; number < machines; ++number) {
    const std::string scenario = simulator::writeScenario(random.next());
    const std::vector<std::string> faults = proof.judge(scenario);
    if (faults.empty()) continue;
    std::cout << "machine " << number << ", " << proof.asked() << ":\n";
    for (const std::string& fault : faults) std::cout << fault << "\n";
    std::cout << scenario << std::endl;
    return EXIT_FAILURE;
  }
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
  for (const auto& [what, times] : proof.tally()) std::cout << what << ": " << times << "\n";
  std::cout << machines << " machines, for which no plan is wrong, in " << time.count() << " s" << std::endl;
  return EXIT_SUCCESS;
} catch (const std::exception& error) {
  std::cerr << error.what() << std::endl;
  return EXIT_FAILURE;
}
