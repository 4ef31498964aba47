#include "controls/disk_names.h"

#include <gtest/gtest.h>

#include "answers/json_reader.h"

namespace host {

namespace {

class DiskNamesTest : public testing::Test {
 protected:
  DiskNames m_names{[this] { return readJson(m_listed, {8, 100}); }};
  std::string m_listed = R"([{"id": "7", "serialNumber": "S-7"}, {"id": "8", "serialNumber": "S-8"}])";
};

TEST_F(DiskNamesTest, LeadFromThePublishedIdToTheSerialNumber) {
  EXPECT_EQ(m_names.serialNumberOf(L"7"), L"") << "nothing was listed";
  m_names.remember();
  EXPECT_EQ(m_names.serialNumberOf(L"7"), L"S-7");
  EXPECT_EQ(m_names.serialNumberOf(L"9"), L"");
}

TEST_F(DiskNamesTest, KnowADiskThatIsListedNoMore) {
  m_names.remember();
  m_listed = "[]";
  m_names.remember();
  EXPECT_EQ(m_names.serialNumberOf(L"8"), L"S-8");
}

TEST_F(DiskNamesTest, DoNotChooseBetweenTwo) {
  m_listed = R"([{"id": "7", "serialNumber": "S"}, {"id": "8", "serialNumber": "S"}])";
  m_names.remember();
  EXPECT_EQ(m_names.serialNumberOf(L"7"), L"");
}

TEST_F(DiskNamesTest, PassOverWhatHasNoName) {
  m_listed = R"([1, {}, {"id": "7"}, {"id": "8", "serialNumber": ""}, {"id": 9, "serialNumber": "S-9"}])";
  m_names.remember();
  for (const wchar_t* const id : {L"7", L"8", L"9", L""}) EXPECT_EQ(m_names.serialNumberOf(id), L"");
}

TEST_F(DiskNamesTest, AreNoneWhenNothingCanBeListed) {
  for (const char* const listed : {"null", "{}", "[[]]"}) {
    m_listed = listed;
    m_names.remember();
  }
  m_listed = "no list";  // raises
  m_names.remember();
  EXPECT_EQ(m_names.serialNumberOf(L"7"), L"");
}

}  // namespace

}  // namespace host
