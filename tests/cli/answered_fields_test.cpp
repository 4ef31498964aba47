#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "commands/command.h"

namespace {

constexpr char kHeading[] =
    R"(The fields that each command answers to scripts: as JSON, a line a record, and CSV.
Scripts stand on them: one may come, and none goes or changes its name without a word in the changes.
tests/cli/answered_fields_test.cpp holds this text to the document of the service; where it is meant to
change, MIRN_REWRITE=1 build/debug/bin/cli_test --gtest_filter='AnsweredFields.*' writes it anew.
)";

std::string answeredFields() {
  const mirnctl::ApiDocument document(mirnctl::embeddedDocument());
  std::string text = kHeading;
  for (const mirnctl::Command& command : commandsOf(document)) {
    if (command.operation == nullptr || !command.operation->answersJson) continue;
    text += '\n' + command.name() + '\n';
    if (command.operation->answer.empty()) text += "  as the service answers\n";
    for (const mirnctl::AnswerField& field : command.operation->answer) text += "  " + field.name + '\n';
  }
  return text;
}

TEST(AnsweredFields, AreThoseOfTheList) {
  const std::string fields = answeredFields();
  if (std::getenv("MIRN_REWRITE") != nullptr) std::ofstream(MIRN_ANSWERED_FIELDS) << fields;
  std::ifstream stream(MIRN_ANSWERED_FIELDS);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(stream), {}), fields);
}

}  // namespace
