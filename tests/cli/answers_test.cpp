#include <gtest/gtest.h>

#include <boost/json/parse.hpp>

#include "answers/presentation.h"
#include "answers/record.h"
#include "answers/table.h"
#include "answers/text_width.h"
#include "exit_status.h"
#include "support/by_name.h"

namespace {

using mirnctl::Format;
using mirnctl::Presentation;

mirnctl::Operation listOfThings() {
  mirnctl::Operation operation;
  operation.columns = {"id", "name", "state", "totalSize"};
  operation.answer = {{"id", "", ""},
                      {"name", "", ""},
                      {"state", "", ""},
                      {"totalSize", "bytes", ""},
                      {"verify.errors", "", ""}};
  operation.answersList = operation.answersJson = true;
  return operation;
}

const boost::json::value kThings = boost::json::parse(R"([
  {"id": "10", "name": "System", "state": "NORMAL", "totalSize": "480094715904", "verify": {"errors": 0}},
  {"id": "9", "name": "A, \"B\"", "state": "DEGRADED", "totalSize": "1024", "verify": {"errors": 2}}])");

std::string shownAs(const Presentation& presentation) {
  return mirnctl::shown(kThings, listOfThings(), presentation);
}

TEST(Table, IsAligned) {
  EXPECT_EQ(
      "ID  NAME    STATE     TOTAL SIZE\n"
      "10  System  NORMAL     447.1 GiB\n"
      "9   A, \"B\"  DEGRADED     1.0 KiB\n",
      shownAs({}));
}

TEST(Table, IsCutToTheScreenAtItsWidestColumns) {
  Presentation presentation;
  presentation.screen.width = 26;
  const std::string text = shownAs(presentation);
  for (std::size_t begin = 0, end = 0; begin < text.size(); begin = end + 1) {
    end = text.find('\n', begin);
    EXPECT_LE(mirnctl::widthOf(text.substr(begin, end - begin)), 26u) << text;
  }
  EXPECT_NE(std::string::npos, text.find("…"));
}

TEST(Table, ColoursStatesWhereThereAreColours) {
  Presentation presentation;
  presentation.screen.hasColours = true;
  EXPECT_NE(std::string::npos, shownAs(presentation).find("\033[31mDEGRADED\033[0m"));
  EXPECT_EQ(std::string::npos, shownAs({}).find('\033'));
}

TEST(Table, OfNothingSaysSo) {
  EXPECT_EQ("none\n", mirnctl::shown(boost::json::array(), listOfThings(), {}));
}

TEST(Table, LeavesOutColumnsThatTellNothingUnlessTheyAreAskedFor) {
  const auto records = boost::json::parse(R"([{"id": "1", "name": null}, {"id": "2"}])");
  mirnctl::Operation operation = listOfThings();
  operation.columns = {"id", "name"};
  EXPECT_EQ("ID\n1\n2\n", mirnctl::shown(records, operation, {}));
  Presentation presentation;
  presentation.columns = operation.columns;
  EXPECT_EQ("ID  NAME\n1   -\n2   -\n", mirnctl::shown(records, operation, presentation));
}

struct Width {
  std::string name;
  std::size_t width;
  std::string expected;
};

class Sentences : public testing::TestWithParam<Width> {};

TEST_P(Sentences, GoOnBelowThemselvesOrStandBelowTheirRows) {
  mirnctl::Operation operation = listOfThings();
  operation.columns = {"state", "name"};
  Presentation presentation;
  presentation.screen.width = GetParam().width;
  const auto records =
      boost::json::parse(R"([{"state": "DEGRADED", "name": "It lacks one of its disks by now."}])");
  EXPECT_EQ(GetParam().expected, mirnctl::shown(records, operation, presentation));
}

INSTANTIATE_TEST_SUITE_P(
    Widths, Sentences,
    testing::Values(Width{"AnyNumber", 0, "STATE     NAME\nDEGRADED  It lacks one of its disks by now.\n"},
                    Width{"Enough", 43, "STATE     NAME\nDEGRADED  It lacks one of its disks by now.\n"},
                    Width{"LessThanThat", 42,
                          "STATE     NAME\nDEGRADED  It lacks one of its disks by\n          now.\n"},
                    Width{"TooLittle", 30, "STATE\nDEGRADED\n    It lacks one of its disks\n    by now.\n"}),
    ByName());

TEST(Csv, HasAllFieldsAndQuotesWhatNeedsIt) {
  Presentation presentation;
  presentation.format = Format::kCsv;
  EXPECT_EQ(
      "id,name,state,totalSize,verify.errors\r\n"
      "10,System,NORMAL,480094715904,0\r\n"
      "9,\"A, \"\"B\"\"\",DEGRADED,1024,2\r\n",
      shownAs(presentation));
}

TEST(Json, HasTheColumnsThatAreAskedFor) {
  Presentation presentation;
  presentation.format = Format::kJson;
  presentation.columns = {"id", "verify.errors"};
  EXPECT_EQ("[{\"id\":\"10\",\"verify.errors\":0},{\"id\":\"9\",\"verify.errors\":2}]\n",
            shownAs(presentation));
}

TEST(JsonLines, AreARecordEach) {
  Presentation presentation;
  presentation.format = Format::kJsonLines;
  presentation.columns = {"name"};
  EXPECT_EQ("{\"name\":\"System\"}\n{\"name\":\"A, \\\"B\\\"\"}\n", shownAs(presentation));
}

TEST(Sorting, TakesNumbersAsNumbers) {
  Presentation presentation;
  presentation.format = Format::kCsv;
  presentation.columns = {"id"};
  presentation.sortBy = "id";
  EXPECT_EQ("id\r\n9\r\n10\r\n", shownAs(presentation));
  presentation.sortBy = "-id";
  EXPECT_EQ("id\r\n10\r\n9\r\n", shownAs(presentation));
}

TEST(Columns, ThatAreNoneAreRefusedWithThoseThatThereAre) {
  for (const bool isSorted : {false, true}) {
    Presentation presentation;
    if (isSorted) {
      presentation.sortBy = "-colour";
    } else {
      presentation.columns = {"colour"};
    }
    try {
      shownAs(presentation);
      ADD_FAILURE() << "taken";
    } catch (const mirnctl::Failure& failure) {
      EXPECT_EQ(mirnctl::ExitStatus::kUsage, failure.status());
      EXPECT_STREQ("there is no column 'colour'", failure.what());
      EXPECT_EQ("there are id, name, state, totalSize, verify.errors", failure.advice());
    }
  }
}

TEST(SingleRecord, IsShownAsLines) {
  mirnctl::Operation operation = listOfThings();
  operation.answersList = false;
  Presentation presentation;
  presentation.columns = {"name", "totalSize"};
  EXPECT_EQ("name       System\ntotalSize  447.1 GiB\n",
            mirnctl::shown(kThings.get_array()[0], operation, presentation));
}

TEST(SingleRecord, HasTablesOfTheRecordsWithinIt) {
  mirnctl::Operation operation;
  operation.answer = {
      {"name", "", ""}, {"parts", "", "", {"of", "atSeconds"}, {{"atSeconds", "s", ""}}}, {"none", "", ""}};
  EXPECT_EQ(
      "name  A\n"
      "\n"
      "parts:\n"
      "OF           AT\n"
      "Lid  2 h 30 min\n"
      "-           5 s\n",
      mirnctl::shown(boost::json::parse(R"({"parts": [{"of": {"id": "1", "name": "Lid"}, "atSeconds": 9000},
                                            {"of": null, "atSeconds": 5}], "name": "A"})"),
                     operation, {}));
}

TEST(SingleRecord, HasSentencesOneByOne) {
  mirnctl::Operation operation;
  operation.answer = {{"said", "", ""}};
  EXPECT_EQ("said  It is so.\n      It was so.\n",
            mirnctl::shown(boost::json::parse(R"({"said": ["It is so.", "It was so."]})"), operation, {}));
}

TEST(ForPeople, NothingIsShownAsJson) {
  const auto text = [](const char* json) { return mirnctl::textForPeople(boost::json::parse(json), {}); };
  EXPECT_EQ("2026-11-22 19:47:05Z", text("\"2026-11-22T19:47:05.676Z\""));
  EXPECT_EQ("2026-11-22T19:47:05.67aZ", text("\"2026-11-22T19:47:05.67aZ\""));
  EXPECT_EQ("first", text(R"({"by": "first", "at": "2026"})"));
  EXPECT_EQ("version 7 disks 2", text(R"({"version": "7", "disks": 2})"));
  EXPECT_EQ("1 d 1 h", mirnctl::textForPeople(90000, "s"));
}

TEST(Page, IsShownByItsItems) {
  EXPECT_EQ(1u, mirnctl::recordsOf(boost::json::parse(R"({"items": [{"id": 1}], "next": null})")).size());
}

struct Size {
  std::string name;
  double bytes;
  std::string text;
};

class BinaryUnit : public testing::TestWithParam<Size> {};

TEST_P(BinaryUnit, IsTheLargestBelowAThousand) {
  EXPECT_EQ(GetParam().text, mirnctl::withBinaryUnit(GetParam().bytes));
}

INSTANTIATE_TEST_SUITE_P(Sizes, BinaryUnit,
                         testing::Values(Size{"Zero", 0, "0 B"}, Size{"Bytes", 1023, "1023 B"},
                                         Size{"One", 1024, "1.0 KiB"}, Size{"RoundsUp", 1048575, "1.0 MiB"},
                                         Size{"Tebibytes", 2199023255552, "2.0 TiB"},
                                         Size{"Largest", 18446744073709551615.0, "16384.0 PiB"}),
                         ByName());

TEST(Text, CannotCommandTheTerminal) {
  EXPECT_EQ("a?[31mb?", mirnctl::printable("a\033[31mb\n"));
  EXPECT_EQ("?31m", mirnctl::printable("\xC2\x9B"
                                       "31m"));
  EXPECT_EQ("é…", mirnctl::printable("é…"));
}

TEST(Text, IsBrokenAtBlanks) {
  using Lines = std::vector<std::string>;
  EXPECT_EQ((Lines{"a bc", "def"}), mirnctl::wrapped("a bc def", 5));
  EXPECT_EQ((Lines{"  a", "bc"}), mirnctl::wrapped("  a bc", 4));
  EXPECT_EQ((Lines{"abcdef", "g"}), mirnctl::wrapped("abcdef g", 3));
  EXPECT_EQ((Lines{""}), mirnctl::wrapped("", 3));
  EXPECT_EQ((Lines{"a b"}), mirnctl::wrapped("a b", 0));
  EXPECT_EQ("  a b\n    cdef\n", mirnctl::hanging("  a b cdef", 4, 9));
}

TEST(Text, IsShortenedByCharacters) {
  EXPECT_EQ("äöü", mirnctl::shortened("äöü", 3));
  EXPECT_EQ("äö…", mirnctl::shortened("äöüß", 3));
  EXPECT_EQ("", mirnctl::shortened("ab", 0));
}

}  // namespace
