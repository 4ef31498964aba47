#include "commands/complete.h"

#include <gtest/gtest.h>

#include <fstream>

#include "shelves.h"
#include "support/by_name.h"
#include "support/temporary_folder.h"

namespace {

struct TypedLine {
  std::string name;
  std::vector<std::string> words;
  std::string candidates;
};

class CompletedLine : public CommandLine, public testing::WithParamInterface<TypedLine> {
 protected:
  CompletedLine() {
    m_surroundings.configuration = (m_folder.path() / "config").string();
    std::ofstream(m_surroundings.configuration) << "[default]\nhost = a:1\n[attic]\nhost = b:2\n";
  }

  TemporaryFolder m_folder;
};

TEST_P(CompletedLine, HasTheseCandidates) {
  std::vector<std::string> words{"complete", "--"};
  words.insert(words.end(), GetParam().words.begin(), GetParam().words.end());
  const Outcome outcome = run(words);
  EXPECT_EQ(GetParam().candidates, outcome.out);
  EXPECT_EQ("", outcome.err);
  EXPECT_EQ(mirnctl::ExitStatus::kDone, outcome.status);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, CompletedLine,
    testing::Values(
        TypedLine{"Noun", {"b"}, "boxs\tof boxs\n"},
        TypedLine{"LoneVerb", {"ti"}, "tidy\tPuts all in order.\n"},
        TypedLine{
            "Verbs",
            {"boxs", ""},
            "list\tLists all boxes.\nburn\tBurns a box.\nfill\tFills a box.\nshow\tAll that is known of one "
            "box.\n"},
        TypedLine{"VerbBehindOptions", {"--yes", "--output", "json", "boxs", "b"}, "burn\tBurns a box.\n"},
        TypedLine{"NothingFits", {"boxs", "x"}, ""}, TypedLine{"UnknownNoun", {"hats", ""}, ""},
        TypedLine{"NamesOfObjects", {"boxs", "burn", ""}, "Hats\n112\tShoes\n2\tShoes\n"},
        TypedLine{"IdsWhereTheNameDoesNotFit", {"boxs", "burn", "11"}, "111\tHats\n112\tShoes\n"},
        TypedLine{
            "OptionsOfTheCommand",
            {"boxs", "list", "--c"},
            "--colour\n--ca-file\tCertificates to trust besides the system's\n--columns\tThese alone, with "
            "commas between\n--curl\tPrints the request as a command, and does not send it\n"},
        TypedLine{"OptionsAreOfferedOnce",
                  {"boxs", "list", "--colour", "RED", "--col"},
                  "--columns\tThese alone, with commas between\n"},
        TypedLine{"OptionsBehindTheLastPlace", {"boxs", "fill", "Hats", "1", ""}, "--with\n"},
        TypedLine{"Words", {"boxs", "list", "--colour", ""}, "RED\nDARK_BLUE\n"},
        TypedLine{"WordsInSmallLetters", {"boxs", "list", "--colour", "d"}, "dark_blue\n"},
        TypedLine{"WordsBehindEquals", {"boxs", "list", "--colour=R"}, "--colour=RED\n"},
        TypedLine{"TheNextOfAList", {"boxs", "fill", "Hats", "1", "--with", "112,H"}, "112,Hats\n"},
        TypedLine{"NothingTwiceInAList", {"boxs", "fill", "Hats", "1", "--with", "Hats,H"}, ""},
        TypedLine{"AFreeText", {"boxs", "fill", "Hats", ""}, ""},
        TypedLine{"Formats", {"--output", "j"}, "json\njsonl\n"},
        TypedLine{"Profiles", {"--profile", ""}, "default\nattic\n"},
        TypedLine{"Files", {"--token-file", "/t"}, ":\n"},
        TypedLine{"FilesBehindEquals", {"--ca-file="}, ":\n"},
        TypedLine{"Columns", {"boxs", "list", "--columns", "id,r"}, "id,room\n"},
        TypedLine{"ColumnsTheOtherWayRound", {"boxs", "list", "--sort", "-r"}, "-room\n"},
        TypedLine{"Operations", {"call", "t"}, "tidy\n"},
        TypedLine{"Shells", {"completion", ""}, "bash\nzsh\nfish\n"},
        TypedLine{"Global",
                  {"--ho"},
                  "--host\tWhere the service is: http://HOST:PORT, https://HOST:PORT, unix:PATH\n"}),
    ByName());

using Completing = CommandLine;

TEST_F(Completing, AsksWhereTheLineSays) {
  run({"complete", "--", "boxs", "burn", "--host", "elsewhere:81", ""});
  EXPECT_EQ("http://elsewhere:81", m_destination.url());
}

TEST_F(Completing, IsSilentWhereTheServiceIsNot) {
  m_service.answers.clear();
  for (const char* host : {"here:1", "ftp://x"}) {
    const Outcome outcome = run({"complete", "--", "--host", host, "boxs", "burn", ""});
    EXPECT_EQ("", outcome.out + outcome.err);
    EXPECT_EQ(mirnctl::ExitStatus::kDone, outcome.status);
  }
}

TEST_F(Completing, NamesAreMadeHarmless) {
  m_service.answers.clear();
  m_service.answer("GET /api/v1/boxes", "[{\"id\":\"1\",\"name\":\"A\\nB\\u001b\"}]");
  EXPECT_EQ("A?B?\n", run({"complete", "--", "boxs", "burn", ""}).out);
}

TEST_F(Completing, HasAScriptForEachShell) {
  for (const std::string& shell : mirnctl::completedShells()) {
    EXPECT_NE(std::string::npos, run({"completion", shell}).out.find(" complete -- ")) << shell;
  }
  EXPECT_EQ("mirnctl: nothing is known of the shell 'tcsh'\n  there are bash, zsh, fish\n",
            run({"completion", "tcsh"}).err);
}

}  // namespace
