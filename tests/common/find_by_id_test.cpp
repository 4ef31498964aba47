#include "find_by_id.h"

#include <gtest/gtest.h>

#include <vector>

#include "support/model_samples.h"

namespace {

class FindById : public testing::Test {
 protected:
  static Array array(const wchar_t* id, VEX_HANDLE handle) {
    return complete<Array>().id(id).handle(handle).build();
  }

  template <class Message>
  void expectRefusal(const std::wstring& id, const Message& message, const std::string& words) {
    try {
      findById(m_arrays, id, kErrorObjectNotFound, message);
      FAIL() << "found";
    } catch (const ListenerException& error) {
      EXPECT_STREQ(error.getErrorId(), "OBJECT_NOT_FOUND");
      EXPECT_EQ(error.getMessage(), words);
    }
  }

  std::vector<Array> m_arrays = {array(L"7", 1), array(L"8", 2), array(L"8", 3)};
};

TEST_F(FindById, GivesTheFirstOfEqualIds) {
  EXPECT_EQ(findById(m_arrays, L"8", kErrorObjectNotFound, "none").handle(), 2U);
}

TEST_F(FindById, GivesAReferenceIntoTheList) {
  EXPECT_EQ(&findById(m_arrays, L"7", kErrorObjectNotFound, "none"), &m_arrays[0]);
  const std::vector<Array>& constant = m_arrays;
  EXPECT_EQ(&findById(constant, L"7", kErrorObjectNotFound, "none"), &constant[0]);
}

TEST_F(FindById, ComparesTheWholeId) {
  expectRefusal(L"", "none", "none");
  expectRefusal(L"70", "none", "none");
  expectRefusal(L" 7", "none", "none");
}

TEST_F(FindById, RaisesTheWordsGivenNarrowOrWide) {
  expectRefusal(L"9", "Array identifier not found", "Array identifier not found");
  expectRefusal(L"9", L"\x00FC not found", "\xC3\xBC not found");
}

}  // namespace
