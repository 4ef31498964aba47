// Every call of the storage library that the module makes in a whole life, byte for byte as
// recorded_calls.txt has it. The same file is compared on every platform, so what equals it here and
// there is equal.
//
// After a wanted change, MIRN_WRITE_RECORDED_CALLS=1 in the environment of this program makes the file anew;
// look at the difference before committing it.

#include <gtest/gtest.h>

#include <cstdlib>

#include "module/recorded_lives.h"
#include "support/default_settings.h"
#include "support/expected_file.h"
#include "support/log_lines.h"

namespace {

constexpr char kHead[] =
    "# Calls of the storage library, and what brought them about. Made by recorded_calls_test, which tells "
    "in\n"
    "# its source how to make it anew; how to read it stands in call_record.h.";

std::string recordedCalls() {
  CallRecord record(ScriptedLibrary::fresh());
  const LoadedModule module(MIRN_TEST_MODULE);
  record.write(kHead);
  record.write("\n# Lives");
  recordLives(record, module);
  record.write("\n# Each action, with its effect");
  recordActions(record, module);
  record.write("\n# Requests of every shape, without effect");
  recordVariations(record, module);
  record.write("\n# Calls refused");
  recordRefusals(record, module);
  record.write("\n# The session without the module: what no route reaches");
  recordSession(record);
  return record.text();
}

class RecordedCalls : public testing::Test {
 protected:
  DefaultSettings m_settings;
  LogLines m_log;
};

TEST_F(RecordedCalls, AreThoseOfTheCommittedFile) {
  const std::string calls = recordedCalls();
  if (std::getenv("MIRN_WRITE_RECORDED_CALLS")) {
    writeExpectedFile(MIRN_RECORDED_CALLS, calls);
    GTEST_SKIP() << "written, not compared: " MIRN_RECORDED_CALLS;
  }
  const std::string difference = firstDifference(readExpectedFile(MIRN_RECORDED_CALLS), calls);
  EXPECT_TRUE(difference.empty()) << MIRN_RECORDED_CALLS ", " << difference;
}

TEST_F(RecordedCalls, HoldEveryOperation) {
  const std::string calls = readExpectedFile(MIRN_RECORDED_CALLS);
  for (const ScriptedOperation& operation : scriptedOperations()) {
    EXPECT_NE(calls.find(std::string(operation.name) + '('), std::string::npos) << operation.name;
  }
}

}  // namespace
