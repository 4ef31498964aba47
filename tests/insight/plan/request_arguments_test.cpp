#include "plan/request_arguments.h"

#include <gmock/gmock.h>

#include "insight/machine/small_machine.h"
#include "insight/plan/small_changes.h"
#include "support/body.h"

namespace insight {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ArgumentsOfARequest : public testing::Test {
 protected:
  RequestArguments arguments(const ServiceObject& body) const {
    return {m_operation, {L"V", L"change"}, body};
  }

  std::wstring filled(const wchar_t* text, const ServiceObject& body) const {
    return arguments(body).filledIn(text, m_machine);
  }

  const Operation m_operation = changeOfVolume();
  const MachineView m_machine = smallMachine();
};

TEST_F(ArgumentsOfARequest, AreThoseOfThePathAndTheBody) {
  const RequestArguments given = arguments(body({{"name", "New"}, {"disks", list({"S", "D0"})}}));
  EXPECT_THAT(given.valuesOf(L"volumeId"), ElementsAre(L"V"));
  EXPECT_THAT(given.valuesOf(L"disks"), ElementsAre(L"S", L"D0"));
  EXPECT_EQ(given.valueOf(L"name"), L"New");
  EXPECT_THAT(given.valuesOf(L"size"), IsEmpty());
  EXPECT_THAT(given.valuesOf(L""), IsEmpty());
  EXPECT_EQ(given.valueOf(L"size"), L"");
  EXPECT_THAT(given.given(), ElementsAre(L"name", L"disks"));
}

TEST_F(ArgumentsOfARequest, MayBeNone) {
  const RequestArguments given = arguments({});
  EXPECT_THAT(given.given(), IsEmpty());
  EXPECT_THAT(given.valuesOf(L"name"), IsEmpty());
  EXPECT_FALSE(given.fulfil({L"name", {}}));
}

TEST_F(ArgumentsOfARequest, FulfilAConditionByBeingThereAndByTheirWord) {
  const RequestArguments given = arguments(body({{"name", "New"}}));
  EXPECT_TRUE(given.fulfil({}));
  EXPECT_TRUE(given.fulfil({L"name", {}}));
  EXPECT_TRUE(given.fulfil({L"name", L"New"}));
  EXPECT_FALSE(given.fulfil({L"name", L"Other"}));
  EXPECT_FALSE(given.fulfil({L"size", {}}));
}

TEST_F(ArgumentsOfARequest, AreToldByTheNamesOfWhatTheyNameElseAsTheyAre) {
  EXPECT_EQ(filled(L"{volumeId} becomes {name}.", body({{"name", "New"}})), L"Data becomes New.");
  EXPECT_EQ(filled(L"On {disks}", body({{"disks", list({"S", "D0"})}})), L"On SATA N-S, SATA N-D0");
  EXPECT_EQ(filled(L"{diskId}", body({{"diskId", "nobody"}})), L"nobody");
  EXPECT_EQ(filled(L"No argument {", {}), L"No argument ");
}

TEST_F(ArgumentsOfARequest, TellASizeInItsUnit) {
  EXPECT_EQ(filled(L"Grows to {size}.", body({{"size", "100"}})), L"Grows to 100 MiB.");
  EXPECT_EQ(filled(L"Grows to {size}.", body({{"size", "0"}})), L"Grows to the largest size.");
}

}  // namespace

}  // namespace insight
