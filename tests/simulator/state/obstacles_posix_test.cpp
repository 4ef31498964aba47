#include <gtest/gtest.h>

#include "simulator/state/state_fixture.h"

namespace simulator {
namespace {

/// What stands in a state's files when it starts, and what it says of that. FOLDER is the folder of the test.
struct Obstacle {
  const char* name;
  void (*prepare)(const std::string& state);
  const char* said;
};

class StateThatIsNotUnderstood : public StateFixture, public testing::WithParamInterface<Obstacle> {};

std::string contentOf(const std::string& path) {
  boost::system::error_code none;
  return boost::filesystem::is_regular_file(path, none) ? readText(path) : "none";
}

TEST_P(StateThatIsNotUnderstood, RefusesTheStartAndStaysAsItIs) {
  const Obstacle& row = GetParam();
  ASSERT_EQ(start(), 0U);
  ASSERT_EQ(rename("one"), 0U);
  kill();
  row.prepare(path("state.json"));
  const std::string state = contentOf(path("state.json"));
  const std::string journal = contentOf(path("state.json.journal"));
  std::string wanted = std::string("VEXL2: ") + row.said + "\n";
  for (std::size_t at = 0; (at = wanted.find("FOLDER")) != std::string::npos;) {
    wanted.replace(at, 6, boost::filesystem::path(path("x")).parent_path().string());
  }
  EXPECT_EQ(said([&] { EXPECT_EQ(start(), VEX_STATUS_FAILED); }), wanted);
  EXPECT_EQ(contentOf(path("state.json")), state);
  EXPECT_EQ(contentOf(path("state.json.journal")), journal);
}

void append(const std::string& path, const std::string& text) { writeText(path, readText(path) + text); }

INSTANTIATE_TEST_SUITE_P(
    State, StateThatIsNotUnderstood,
    testing::Values(
        Obstacle{
            "AnotherDigest", [](const std::string& state) { append(state, " "); },
            "FOLDER/state.json.journal: belongs to another content of FOLDER/state.json; put that content "
            "back, or move the journal away to go on without the changes in it"},
        Obstacle{
            "NoState", [](const std::string& state) { boost::filesystem::remove(state); },
            "FOLDER/state.json.journal: holds changes of a state file that is not there; put that one back, "
            "or move the journal away to begin with a new machine"},
        Obstacle{
            "ForeignJournal",
            [](const std::string& state) { writeText(state + ".journal", "{\"a\":1}\n{\"b\":2}\n"); },
            "FOLDER/state.json.journal: belongs to another content of FOLDER/state.json; put that content "
            "back, or move the journal away to go on without the changes in it"},
        Obstacle{
            "BrokenLineInTheMiddle",
            [](const std::string& state) { append(state + ".journal", "{\"volumes\n{\"volumes\":[]}\n"); },
            "FOLDER/state.json: FOLDER/state.json.journal, line 3: not JSON at byte 9: incomplete JSON; "
            "mend "
            "it, or move it away to begin with a new machine"},
        Obstacle{
            "UnknownKeyInALine",
            [](const std::string& state) { append(state + ".journal", "{\"colours\":[]}\n"); },
            "FOLDER/state.json: FOLDER/state.json.journal, line 3: unknown key \"colours\"; mend it, or move "
            "it away to begin with a new machine"},
        Obstacle{
            "ObjectWithoutAHandle",
            [](const std::string& state) { append(state + ".journal", "{\"volumes\":[{}]}\n"); },
            "FOLDER/state.json: FOLDER/state.json.journal, line 3: an object without a handle; mend it, or "
            "move it away to begin with a new machine"},
        Obstacle{"EmptyState",
                 [](const std::string& state) {
                   boost::filesystem::remove(state + ".journal");
                   writeText(state, "");
                 },
                 "FOLDER/state.json: not JSON at byte 0: incomplete JSON; mend it, or move it away to begin "
                 "with a "
                 "new machine"},
        Obstacle{
            "RingOfLinks",
            [](const std::string& state) {
              boost::filesystem::remove(state);
              boost::filesystem::create_symlink(state, state);
            },
            "FOLDER/state.json: cannot be opened: Too many levels of symbolic links; mend the link, or move "
            "it away to begin with a new machine"},
        Obstacle{
            "FolderInItsPlace",
            [](const std::string& state) {
              boost::filesystem::remove(state);
              boost::filesystem::create_directory(state);
            },
            "FOLDER/state.json: cannot be read: Is a directory; make it readable, or move it away to begin "
            "with a new machine"},
        Obstacle{
            "FolderInTheJournalsPlace",
            [](const std::string& state) {
              boost::filesystem::remove(state + ".journal");
              boost::filesystem::create_directory(state + ".journal");
            },
            "FOLDER/state.json.journal: cannot be read: Is a directory; make it readable, or move it away to "
            "begin with a new machine"}),
    [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace simulator
