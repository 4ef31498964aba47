// Tells what would come of events on the simulated twin of a machine. The question comes by standard input
// and the answer by standard output, both JSON; the host runs it. Where there is none it ends with status 3
// and the reason on standard error.

#include <boost/json/serialize.hpp>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "scenario/parse.h"
#include "whatif/whatif.h"

namespace {

constexpr int kNoAnswer = 3;

}  // namespace

int main() {
  std::ios::sync_with_stdio(false);
  const std::string question((std::istreambuf_iterator<char>(std::cin)), std::istreambuf_iterator<char>());
  try {
    std::cout << boost::json::serialize(
        simulator::whatIf(simulator::whatIfQuestionOf(simulator::parseJson(question))));
    return std::cout.flush() ? 0 : 1;
  } catch (const std::runtime_error& error) {
    std::cerr << error.what();
    return kNoAnswer;
  }
}
