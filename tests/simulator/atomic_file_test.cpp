#include "core/atomic_file.h"

#include <gtest/gtest.h>

#include <string>

#include "support/temporary_folder.h"

namespace simulator {
namespace {

class AtomicFile : public testing::Test {
 protected:
  std::string path() const { return (m_folder / "state.json").string(); }
  std::string content() const { return readText(path()); }

 private:
  const TemporaryFolder m_folder;
};

TEST_F(AtomicFile, IsMadeAndReplaced) {
  EXPECT_TRUE(replaceFile(path(), "one"));
  EXPECT_EQ(content(), "one");
  EXPECT_TRUE(replaceFile(path(), "other"));
  EXPECT_EQ(content(), "other");
}

TEST_F(AtomicFile, StaysWhenItCannotBeReplaced) {
  ASSERT_TRUE(replaceFile(path(), "one"));
  ASSERT_TRUE(boost::filesystem::create_directory(path() + ".new"));  // in the way of the temporary file
  EXPECT_FALSE(replaceFile(path(), "other"));
  EXPECT_EQ(content(), "one");
}

}  // namespace
}  // namespace simulator
