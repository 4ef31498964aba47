#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <random>
#include <string>

#include "simulator/reference/walk.h"

// Walks the library beside the reference machine for as many steps as asked. Prints the seed, where they
// part, and what was seen.

namespace {

/// A machine wears out after some thousand steps; then the next one begins.
constexpr unsigned long kStepsOfAWalk = 5000;

void print(const reference::Tally& tally) {
  for (const auto& [answer, times] : tally.answers) {
    std::cout << answer.first << " answered " << answer.second << ": " << times << "\n";
  }
  for (const auto& [state, times] : tally.states)
    std::cout << "volume state " << state << ": " << times << "\n";
  std::cout << "migrations waiting at their end: " << tally.migrationsThatWaited
            << ", catching up: " << tally.migrationsThatCaughtUp
            << "; works sharing: " << tally.worksThatShared << "\n";
}

/// Returns whether they stayed together.
bool walk(std::uint32_t seed, unsigned long steps, reference::Tally& tally) {
  reference::Walk walk(seed, tally);
  for (unsigned long step = 0; step < steps; ++step) {
    const std::string difference = walk.step();
    if (difference.empty()) continue;
    std::cout << "seed " << seed << ", step " << step << ":\n" << difference << walk.story();
    return false;
  }
  return true;
}

}  // namespace

int main(int count, char** arguments) try {
  const unsigned long steps = count > 1 ? std::stoul(arguments[1]) : 1000000;
  auto seed = static_cast<std::uint32_t>(count > 2 ? std::stoul(arguments[2]) : std::random_device{}());
  std::cout << steps << " steps from seed " << seed << std::endl;
  const auto begin = std::chrono::steady_clock::now();
  reference::Tally tally;
  for (unsigned long done = 0; done < steps; done += kStepsOfAWalk, ++seed) {
    if (!walk(seed, std::min(kStepsOfAWalk, steps - done), tally)) return EXIT_FAILURE;
  }
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
  print(tally);
  std::cout << steps << " steps without a difference, in " << time.count() << " s" << std::endl;
  return EXIT_SUCCESS;
} catch (const std::exception& error) {
  std::cerr << error.what() << std::endl;
  return EXIT_FAILURE;
}
