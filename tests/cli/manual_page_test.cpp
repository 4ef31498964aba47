#include "manual/manual_page.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "commands/global_options.h"
#include "exit_status.h"
#include "shelves.h"
#include "troff.h"

namespace {

std::string pageOf(const mirnctl::ApiDocument& document) {
  return manualPage(commandsOf(document), "2026-01-31");
}

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(ManualPage, TellsEachCommandWithWhatItTakes) {
  const std::string page = pageOf(mirnctl::ApiDocument(kDocument));
  EXPECT_TRUE(has(page,
                  ".SS \"boxs\"\n.TP\n\\fBboxs list\\fR\nLists all boxes.\n.TP\n\\fB    \\-\\-colour\\fR "
                  "\\fIRED|DARK_BLUE\\fR\n"))
      << page;
  EXPECT_TRUE(has(page, "\\fBboxs fill\\fR \\fIboxId amount\\fR\nFills a box.\n")) << page;
  EXPECT_TRUE(has(page, "\\fBcall\\fR \\fIoperation [NAME=VALUE ...]\\fR\n")) << page;
}

TEST(ManualPage, TellsEachCommandOfTheEmbeddedDocumentOnce) {
  const mirnctl::ApiDocument document(mirnctl::embeddedDocument());
  const std::string page = pageOf(document);
  for (const mirnctl::Command& command : commandsOf(document)) {
    const std::string item = "\n\\fB" + escapedForTroff(command.name()) + "\\fR";
    const std::size_t first =
        page.find(item + ' ') == std::string::npos ? page.find(item + '\n') : page.find(item + ' ');
    EXPECT_NE(std::string::npos, first) << command.name();
    EXPECT_EQ(std::string::npos, page.find(item + ' ', first + 1)) << command.name();
  }
}

TEST(ManualPage, TellsEachOptionAndExitStatus) {
  const std::string page = pageOf(mirnctl::ApiDocument(kDocument));
  for (const mirnctl::GlobalOption& option : mirnctl::globalOptions()) {
    EXPECT_TRUE(has(page, "\\fB" + escapedForTroff(option.name) + "\\fR")) << option.name;
  }
  for (const mirnctl::ExitStatusRow& row : mirnctl::kExitStatuses) {
    EXPECT_TRUE(has(page, "\\fB" + std::to_string(static_cast<int>(row.status)) + "\\fR\n" +
                              escapedForTroff(row.meaning) + ".\n"))
        << row.meaning;
  }
}

TEST(DocumentedExitStatuses, AreThoseThatThereAre) {
  std::ifstream stream(MIRN_CLI_DOCUMENTATION);
  const std::string text(std::istreambuf_iterator<char>(stream), {});
  std::string table = "| Status | Means |\n|---|---|\n";
  for (const mirnctl::ExitStatusRow& row : mirnctl::kExitStatuses) {
    table += "| " + std::to_string(static_cast<int>(row.status)) + " | " + row.meaning + " |\n";
  }
  EXPECT_TRUE(has(text, table + '\n')) << "docs/mirnctl.md should have\n" << table;
}

}  // namespace
