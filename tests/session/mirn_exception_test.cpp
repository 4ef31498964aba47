#include "mirn_exception.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(MirnExceptionTest, CarriesItsIdAndText) {
  const MirnException failure(kErrorDiskInvalidState, "No such thing");
  EXPECT_STREQ(failure.getErrorId(), "Mirn_DISK_INVALID_STATE");
  EXPECT_STREQ(failure.getMessage(), "No such thing");
  EXPECT_STREQ(failure.what(), "No such thing");
}

TEST(MirnExceptionTest, ACopyOutlivesTheOriginal) {
  auto original = std::make_unique<MirnException>(kErrorOperationFailed, "No such thing");
  const MirnException copy = *original;
  original.reset();
  EXPECT_STREQ(copy.getErrorId(), "Mirn_OPERATION_FAILED");
  EXPECT_STREQ(copy.what(), "No such thing");
}

TEST(MirnExceptionTest, IsCaughtByEitherBase) {
  EXPECT_THROW(throw MirnException("", ""), std::logic_error);
  EXPECT_THROW(throw MirnException("", ""), ovra::common::IErrorIdException);
}

}  // namespace
