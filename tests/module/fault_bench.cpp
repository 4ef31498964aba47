#include "module/fault_bench.h"

#include <iostream>

namespace {

const std::string kPlaceholder = "@";

unsigned allFaults = 0;

class FaultCount : public testing::Environment {
 public:
  void TearDown() override { std::cout << "faults injected: " << allFaults << '\n'; }
};

const testing::Environment* const kFaultCount = testing::AddGlobalTestEnvironment(new FaultCount);

}  // namespace

FaultBench::FaultBench() {
  freshMachine(kPlaceholder);
  ServedModule served(module);
  served.start();
  m_picture = served.picture(false);
  m_wholePicture = served.picture(true);
}

void FaultBench::freshMachine(const std::string& arrayName) {
  ScriptedLibrary::fresh();
  library.setMachine(tinyMachine(arrayName));
  library.recordCalls(false);
  // A refused close leaves the status where the handle stood. No open session may have such a number.
  for (VEX_HANDLE session = 0; session < kLastStatus;) {
    VexSessionOpen(&session);
    VexSessionClose(session);
  }
}

void FaultBench::fail(unsigned call, VEX_STATUS status) {
  library.answer(onAnyCall(call), status);
  ++m_faults;
  ++allFaults;
}

void FaultBench::expectPicture(const ServedModule& served, const std::string& arrayName, bool whole) const {
  std::string expected = whole ? m_wholePicture : m_picture;
  const std::string quoted = '"' + kPlaceholder + '"';
  expected.replace(expected.find(quoted), quoted.size(), '"' + arrayName + '"');
  EXPECT_EQ(served.picture(whole), expected);
}

FaultBench::Lines FaultBench::takeOperations() {
  Lines operations;
  for (const ScriptedCall& call : library.takeCalls()) operations.push_back(call.operation);
  return operations;
}
