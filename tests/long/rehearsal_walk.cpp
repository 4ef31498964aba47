#include "module/rehearsal_walk.h"

#include <chrono>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <random>
#include <string>

// Rehearses as many requests as asked, and does each afterwards. Prints the seed, where the two part, and
// what was seen. Its arguments are the number of requests and the seed.

int main(int count, char** arguments) try {
  const unsigned long steps = count > 1 ? std::stoul(arguments[1]) : 1000000;
  const auto seed = static_cast<std::uint32_t>(count > 2 ? std::stoul(arguments[2]) : std::random_device{}());
  std::cout << steps << " steps from seed " << seed << std::endl;
  const auto begin = std::chrono::steady_clock::now();
  const LoadedModule module(MIRN_TEST_MODULE);
  RehearsalWalk walk(module, seed);
  for (unsigned long step = 0; step < steps; ++step) {
    const std::string difference = walk.step();
    if (difference.empty()) continue;
    std::cout << "seed " << seed << ", step " << step << ":\n" << difference << std::endl;
    return EXIT_FAILURE;
  }
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
  for (const auto& [what, times] : walk.tally()) std::cout << what << ": " << times << "\n";
  std::cout << steps << " steps without a difference, in " << time.count() << " s" << std::endl;
  return EXIT_SUCCESS;
} catch (const std::exception& error) {
  std::cerr << error.what() << std::endl;
  return EXIT_FAILURE;
}
