#include "commands/command_line.h"

#include <gtest/gtest.h>

#include <sstream>

#include "shelves.h"
#include "support/by_name.h"

namespace {

using mirnctl::ApiDocument;
using mirnctl::ExitStatus;

TEST_F(CommandLine, ListsWhatTheDocumentLists) {
  const Outcome outcome = run({"boxs", "list"});
  EXPECT_EQ("ID   NAME\n111  Hats\n112  Shoes\n2    Shoes\n", outcome.out);
  EXPECT_EQ("", outcome.err);
  EXPECT_EQ(ExitStatus::kDone, outcome.status);
}

TEST_F(CommandLine, ANounAloneIsItsList) { EXPECT_EQ(run({"boxs", "list"}).out, run({"boxs"}).out); }

TEST_F(CommandLine, AFileIsNotWrittenToATerminal) {
  EXPECT_EQ("\x1f\x8b crate", run({"crate"}).out);
  m_screen.width = 80;
  m_service.asked.clear();
  const Outcome outcome = run({"crate"});
  EXPECT_EQ(ExitStatus::kUsage, outcome.status);
  EXPECT_EQ("mirnctl: what it answers is no text for a terminal\n  '> FILE' behind it keeps it\n",
            outcome.err);
  EXPECT_EQ("", m_service.lines());
}

TEST_F(CommandLine, TakesOptionsAnywhere) {
  const std::string expected = "id,room\r\n111,2048\r\n112,0\r\n2,0\r\n";
  EXPECT_EQ(expected, run({"--output", "csv", "boxs", "list", "--columns", "id,room"}).out);
  EXPECT_EQ(expected, run({"boxs", "--columns", "id,room", "list", "--output=csv"}).out);
}

TEST_F(CommandLine, SendsParametersByTheirWords) {
  run({"boxs", "list", "--colour", "dark-blue"});
  EXPECT_EQ("/api/v1/boxes?colour=DARK_BLUE", last().target);
}

TEST_F(CommandLine, ShowsOneOfAList) {
  EXPECT_EQ("id    111\nname  Hats\nroom  2.0 KiB\n", run({"boxs", "show", "Hats"}).out);
}

TEST_F(CommandLine, WhatIsMeantByMoreThanOneIsRefusedWithTheCandidates) {
  for (const char* word : {"Shoes", "11"}) {
    const Outcome outcome = run({"boxs", "burn", word, "--yes"});
    EXPECT_EQ(ExitStatus::kUsage, outcome.status);
    EXPECT_NE(std::string::npos, outcome.err.find("it may be 11")) << outcome.err;
    EXPECT_EQ("GET /api/v1/boxes\n", m_service.lines());
    m_service.asked.clear();
  }
}

TEST_F(CommandLine, WhatIsNotThereIsNotFound) {
  const Outcome outcome = run({"boxs", "burn", "Gloves", "--yes"});
  EXPECT_EQ(ExitStatus::kNotFound, outcome.status);
  EXPECT_EQ("mirnctl: there is no box 'Gloves'\n  'mirnctl boxs list' tells which there are\n", outcome.err);
}

TEST_F(CommandLine, SendsAChangeForTheMachineOfItsPlan) {
  const Outcome outcome = run({"boxs", "fill", "Hats", "2G", "--with", "112,Hats"});
  EXPECT_EQ("id    111\nname  Hats\nroom  4.0 KiB\n", outcome.out);
  EXPECT_EQ("PUT", last().method);
  EXPECT_EQ(R"({"amount":"2048","with":["112","111"]})", last().body);
  EXPECT_EQ("\"e.7\"", last().fields.at("If-Match"));
}

TEST_F(CommandLine, WhatLosesSomethingIsNotDoneWithoutSomebody) {
  const Outcome outcome = run({"boxs", "burn", "Hats"});
  EXPECT_EQ(ExitStatus::kRefused, outcome.status);
  EXPECT_NE(std::string::npos, outcome.err.find("Lost: everything in Hats\n")) << outcome.err;
  EXPECT_NE(std::string::npos, outcome.err.find("--yes agrees")) << outcome.err;
  EXPECT_EQ("/api/v1/boxes/111?dryRun=true", last().target);
}

TEST_F(CommandLine, SomebodyTypesTheNameOfWhatIsLost) {
  m_asksPeople = true;
  m_typed = "Hats\n";
  EXPECT_EQ(ExitStatus::kDone, run({"boxs", "burn", "Hats"}).status);
  EXPECT_EQ("/api/v1/boxes/111", last().target);
}

TEST_F(CommandLine, AnotherNameDoesNothing) {
  m_asksPeople = true;
  for (const char* typed : {"hats\n", "\n", ""}) {
    m_typed = typed;
    EXPECT_EQ(ExitStatus::kRefused, run({"boxs", "burn", "Hats"}).status);
    EXPECT_EQ("/api/v1/boxes/111?dryRun=true", last().target);
  }
}

TEST_F(CommandLine, WhoIsSureIsAskedNothing) {
  EXPECT_EQ(ExitStatus::kDone, run({"boxs", "burn", "Hats", "--yes"}).status);
  EXPECT_EQ("/api/v1/boxes/111", last().target);
}

TEST_F(CommandLine, ADryRunTellsThePlanAndDoesNothing) {
  const Outcome outcome = run({"boxs", "burn", "Hats", "--dry-run"});
  EXPECT_EQ("The box goes.\nLost: everything in Hats\nWarning: It smells.\n", outcome.out);
  EXPECT_EQ("/api/v1/boxes/111?dryRun=true", last().target);
}

TEST_F(CommandLine, WhatCannotBeTriedIsNotDone) {
  EXPECT_EQ(ExitStatus::kUsage, run({"tidy", "--dry-run"}).status);
  EXPECT_TRUE(m_service.asked.empty());
}

TEST_F(CommandLine, PrintsARequestWithoutSendingItAndWithoutTheToken) {
  const Outcome outcome = run({"boxs", "fill", "Hats", "1", "--curl", "--host", "http://server:81"});
  EXPECT_EQ(
      "curl -X PUT -H 'Content-Type: application/json' -d '{\"amount\":\"1\"}' "
      "'http://server:81/api/v1/boxes/111/fill'\n",
      outcome.out);
  EXPECT_EQ("GET /api/v1/boxes\n", m_service.lines());
}

struct Refusal {
  std::string name;
  unsigned http;
  ExitStatus status;
};

class RefusedCommand : public CommandLine, public testing::WithParamInterface<Refusal> {};

TEST_P(RefusedCommand, EndsWithItsStatusAndTheWordsOfTheService) {
  m_service.answers["POST /api/v1/tidy"].clear();
  m_service.answer("POST /api/v1/tidy", R"({"title":"T","detail":"Too\u001b untidy","errorId":"SHELF_FULL"})",
                   GetParam().http);
  const Outcome outcome = run({"tidy"});
  EXPECT_EQ(GetParam().status, outcome.status);
  EXPECT_EQ(0u, outcome.err.rfind("mirnctl: SHELF_FULL: Too? untidy\n", 0)) << outcome.err;
  EXPECT_EQ("", outcome.out);
}

INSTANTIATE_TEST_SUITE_P(Statuses, RefusedCommand,
                         testing::Values(Refusal{"BadRequest", 400, ExitStatus::kRefused},
                                         Refusal{"Unauthorized", 401, ExitStatus::kUnauthorised},
                                         Refusal{"Forbidden", 403, ExitStatus::kUnauthorised},
                                         Refusal{"NotFound", 404, ExitStatus::kNotFound},
                                         Refusal{"Conflict", 409, ExitStatus::kConflict},
                                         Refusal{"Stale", 412, ExitStatus::kConflict},
                                         Refusal{"Unprocessable", 422, ExitStatus::kRefused},
                                         Refusal{"Failure", 500, ExitStatus::kInternal},
                                         Refusal{"Unavailable", 503, ExitStatus::kUnreachable}),
                         ByName());

TEST_F(CommandLine, WhatItDoesNotUnderstandIsAMatterOfUsage) {
  const std::vector<std::vector<std::string>> lines{{},
                                                    {"boxs", "lst"},
                                                    {"boxs", "list", "--nothing"},
                                                    {"boxs", "burn"},
                                                    {"boxs", "fill", "Hats"},
                                                    {"boxs", "list", "--output", "xml"},
                                                    {"boxs", "list", "--columns", "colour"},
                                                    {"call", "listBoxes", "colour"},
                                                    {"boxs", "list", "--host", "ftp://x"}};
  for (const auto& line : lines) {
    const Outcome outcome = run(line);
    EXPECT_EQ(ExitStatus::kUsage, outcome.status) << testing::PrintToString(line);
    EXPECT_EQ("", outcome.out);
    EXPECT_NE("", outcome.err);
  }
}

TEST_F(CommandLine, CallsWhatOnlyTheServiceKnows) {
  m_service.answer("GET /openapi.json",
                   R"({"paths": {"/api/v1/attic/{room}": {"get": {"operationId": "seeAttic",
                       "parameters": [{"name": "room", "in": "path", "required": true, "schema": {"type": "string"}}],
                       "responses": {"200": {"content": {"application/json": {"schema": {"type": "object"}}}}},
                       "x-mirn": {"noun": "attic", "verb": "see", "effect": "read"}}}}})");
  m_service.answer("GET /api/v1/attic/left%20one", R"({"dust": true})");
  EXPECT_EQ("dust  yes\n", run({"call", "seeAttic", "room=left one"}).out);
  EXPECT_EQ(ExitStatus::kNotFound, run({"call", "seeCellar"}).status);
}

TEST_F(CommandLine, HelpTellsTheExitStatusesAndTheWordsOfArguments) {
  const Outcome all = run({"--help"});
  EXPECT_EQ(ExitStatus::kDone, all.status);
  for (const auto& row : mirnctl::kExitStatuses) {
    EXPECT_NE(std::string::npos,
              all.out.find(std::to_string(static_cast<int>(row.status)) + "  " + row.meaning));
  }
  const Outcome one = run({"boxs", "list", "--help"});
  EXPECT_NE(std::string::npos, one.out.find("RED|DARK_BLUE")) << one.out;
}

TEST(EmbeddedDocument, HasACommandForEachOperation) {
  const ApiDocument document(mirnctl::embeddedDocument());
  ASSERT_GT(document.operations().size(), 50u);
  for (const mirnctl::Operation& operation : document.operations()) {
    EXPECT_EQ(&operation, document.find(operation.noun, operation.verb)) << operation.id;
    std::istringstream in;
    std::ostringstream out, err;
    mirnctl::Terminal terminal{in, out, err};
    std::vector<std::string> words;
    if (!operation.noun.empty()) words.push_back(operation.noun);
    words.push_back(operation.verb);
    words.emplace_back("--help");
    const auto nobody = [](const mirnctl::Destination&,
                           std::chrono::seconds) -> std::unique_ptr<mirnctl::IService> { return nullptr; };
    EXPECT_EQ(ExitStatus::kDone, runCommand(words, document, {}, nobody, terminal))
        << operation.id << err.str();
    EXPECT_NE(std::string::npos, out.str().find(operation.summary)) << operation.id << out.str();
  }
}

}  // namespace
