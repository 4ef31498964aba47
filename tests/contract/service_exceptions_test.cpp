#include "service_exceptions.h"

#include <gtest/gtest.h>

#include <type_traits>

#include "support/by_name.h"
#include "support/virtual_slot.h"

namespace {

using ovra::common::HttpClientErrorException;
using ovra::common::IErrorIdException;

static_assert(std::has_virtual_destructor_v<IErrorIdException> && std::is_abstract_v<IErrorIdException>);
static_assert(std::is_base_of_v<std::logic_error, ListenerException>);
static_assert(std::is_base_of_v<IErrorIdException, ListenerException>);
static_assert(std::is_base_of_v<std::runtime_error, HttpClientErrorException>);
static_assert(!std::is_base_of_v<IErrorIdException, HttpClientErrorException>);
static_assert(std::is_same_v<decltype(HttpClientErrorException::status), std::int32_t>);

TEST(IErrorIdExceptionTest, HasItsVirtualOperationsInOrderBehindTheDestructor) {
  EXPECT_EQ(virtualSlot(&IErrorIdException::getErrorId), 2u);
  EXPECT_EQ(virtualSlot(&IErrorIdException::getMessage), 3u);
}

TEST(ListenerExceptionTest, TellsTheSameTextInBothViewsAndItsId) {
  const ListenerException error(kErrorNotSupported, "the disk cannot do this");
  EXPECT_STREQ(error.what(), "the disk cannot do this");
  EXPECT_STREQ(error.getMessage(), "the disk cannot do this");
  EXPECT_STREQ(error.getErrorId(), "NOT_SUPPORTED");
}

TEST(ListenerExceptionTest, IsCaughtInEitherViewAsTheSameObject) {
  const auto raise = [] { throw ListenerException(kErrorOffline, "text"); };
  try {
    raise();
    FAIL();
  } catch (const IErrorIdException& view) {
    EXPECT_STREQ(view.getErrorId(), "Mirn_OFFLINE");
    EXPECT_STREQ(dynamic_cast<const std::exception&>(view).what(), "text");
  }
  try {
    raise();
    FAIL();
  } catch (const std::exception& view) {
    EXPECT_STREQ(dynamic_cast<const IErrorIdException&>(view).getErrorId(), "Mirn_OFFLINE");
  }
}

TEST(ListenerExceptionTest, ACopyOutlivesItsOriginal) {
  auto original = std::make_unique<ListenerException>(kErrorInternal, "a text too long for any small buffer");
  const ListenerException copy(*original);
  original.reset();
  EXPECT_STREQ(copy.getErrorId(), "INTERNAL_ERROR");
  EXPECT_STREQ(copy.getMessage(), "a text too long for any small buffer");
}

TEST(HttpClientErrorExceptionTest, CarriesAStatusAndNoId) {
  const HttpClientErrorException error(404, "Request is not supported");
  EXPECT_EQ(error.status, 404);
  EXPECT_STREQ(error.what(), "Request is not supported");
  const std::exception& view = error;
  EXPECT_EQ(dynamic_cast<const IErrorIdException*>(&view), nullptr);
  EXPECT_EQ(dynamic_cast<const std::logic_error*>(&view), nullptr);
}

struct Id {
  const char* name;
  const char* id;
  const char* text;
};

class ErrorIds : public testing::TestWithParam<Id> {};

TEST_P(ErrorIds, HaveTheirTexts) { EXPECT_STREQ(GetParam().id, GetParam().text); }

INSTANTIATE_TEST_SUITE_P(
    ServiceExceptions, ErrorIds,
    testing::Values(Id{"ObjectNotFound", kErrorObjectNotFound, "OBJECT_NOT_FOUND"},
                    Id{"InvalidParameter", kErrorInvalidParameter, "INVALID_PARAMETER"},
                    Id{"NotSupported", kErrorNotSupported, "NOT_SUPPORTED"},
                    Id{"Internal", kErrorInternal, "INTERNAL_ERROR"},
                    Id{"Offline", kErrorOffline, "Mirn_OFFLINE"},
                    Id{"NotInitialized", kErrorNotInitialized, "Mirn_NOT_INITIALIZED"},
                    Id{"OperationFailed", kErrorOperationFailed, "Mirn_OPERATION_FAILED"},
                    Id{"DiskInvalidState", kErrorDiskInvalidState, "Mirn_DISK_INVALID_STATE"},
                    Id{"ArrayInvalidState", kErrorArrayInvalidState, "Mirn_ARRAY_INVALID_STATE"},
                    Id{"VolumeInvalidState", kErrorVolumeInvalidState, "Mirn_VOLUME_INVALID_STATE"},
                    Id{"InvalidRaidLevel", kErrorInvalidRaidLevel, "Mirn_INVALID_RAID_LEVEL"},
                    Id{"UnsupportedRaidLevel", kErrorUnsupportedRaidLevel, "Mirn_UNSUPPORTED_RAID_LEVEL"}),
    ByName());

}  // namespace
