#include "known_texts.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "support/by_name.h"
#include "support/id_vectors.h"

namespace {

class KnownId : public testing::TestWithParam<IdVector> {};

TEST_P(KnownId, IsTheIdOfTheIdentityTextAndMadeOnce) {
  KnownTexts texts;
  const std::string_view identity = GetParam().uniqueId;
  const SharedText id = texts.ids.of(identity);
  EXPECT_EQ(id.text(), GetParam().id);
  EXPECT_TRUE(texts.ids.of(identity).isSharedWith(id));
}

INSTANTIATE_TEST_SUITE_P(KnownTexts, KnownId, testing::ValuesIn(kIdVectors), ByName());

TEST(KnownTexts, TellAnIdWhateverTheSizeOfItsField) {
  KnownTexts texts;
  const char small[21] = "disk-1";
  const char large[24] = "disk-1";
  EXPECT_TRUE(texts.ids.of(large).isSharedWith(texts.ids.of(small)));
}

TEST(KnownTexts, WriteAnAddressOnce) {
  KnownTexts texts;
  const SharedText address = texts.addresses.of(0x04030201);
  EXPECT_EQ(address.text(), L"1-2-3-4");
  EXPECT_EQ(texts.addresses.of(0).text(), L"0-0-0-0");
  EXPECT_TRUE(texts.addresses.of(0x04030201).isSharedWith(address));
}

TEST(KnownTexts, FormAVendorIdAsDevicesHaveIt) {
  KnownTexts texts;
  const char field[16] = " 8086 ";
  const SharedText id = texts.vendorIds.of(field);
  EXPECT_EQ(id.text(), L"0x8086");
  EXPECT_TRUE(texts.vendorIds.of(field).isSharedWith(id));
}

TEST(KnownTexts, RefuseWhatIsNotUtf8AndGoOn) {
  KnownTexts texts;
  EXPECT_THROW(texts.models.of("\xFF"), std::range_error);
  EXPECT_THROW(texts.ids.of("\xC3"), std::range_error);
  EXPECT_THROW(texts.vendorIds.of("\xC3"), std::range_error);
  EXPECT_EQ(texts.models.size() + texts.ids.size() + texts.vendorIds.size(), 0U);
  EXPECT_EQ(texts.models.of("a").text(), L"a");
}

TEST(KnownTexts, StartOverInEverySequence) {
  KnownTexts texts;
  const auto sizes = [&texts] {
    return std::vector<std::size_t>{texts.ids.size(),
                                    texts.addresses.size(),
                                    texts.controllerNames.size(),
                                    texts.controllerVersions.size(),
                                    texts.arrayNames.size(),
                                    texts.volumeNames.size(),
                                    texts.vendorIds.size(),
                                    texts.serialNumbers.size(),
                                    texts.models.size(),
                                    texts.firmwares.size()};
  };
  texts.ids.of("a");
  texts.addresses.of(1);
  texts.vendorIds.of("a");
  for (auto* const plain : {&texts.controllerNames, &texts.controllerVersions, &texts.arrayNames,
                            &texts.volumeNames, &texts.serialNumbers, &texts.models, &texts.firmwares}) {
    plain->of("a");
  }
  texts.startOver();
  EXPECT_EQ(sizes(), std::vector<std::size_t>(10, 1));
  texts.startOver();
  EXPECT_EQ(sizes(), std::vector<std::size_t>(10, 0));
}

}  // namespace
