#include "builder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "common/builder_setters.h"
#include "support/assertion_output.h"
#include "support/model_samples.h"

namespace {

/// The file that an assertion names, and the number of flags.
template <class Model>
constexpr const char* kSource = nullptr;
template <class Model>
constexpr std::size_t kFlags = 0;

template <>
constexpr const char* kSource<Array> = "array";
template <>
constexpr std::size_t kFlags<Array> = 9;

template <>
constexpr const char* kSource<Controller> = "controller_builder";
template <>
constexpr std::size_t kFlags<Controller> = 18;

template <>
constexpr const char* kSource<Controller::Functions> = "controller_functions";
template <>
constexpr std::size_t kFlags<Controller::Functions> = 11;

template <>
constexpr const char* kSource<EndDevice> = "enddevice";
template <>
constexpr std::size_t kFlags<EndDevice> = 19;

template <>
constexpr const char* kSource<Port> = "port";
template <>
constexpr std::size_t kFlags<Port> = 7;

template <>
constexpr const char* kSource<Raid> = "raid";
template <>
constexpr std::size_t kFlags<Raid> = 11;

template <>
constexpr const char* kSource<RaidLevelSupport> = "raidlevelsupport";
template <>
constexpr std::size_t kFlags<RaidLevelSupport> = 10;

template <>
constexpr const char* kSource<Version> = "version";
template <>
constexpr std::size_t kFlags<Version> = 6;

template <>
constexpr const char* kSource<Volume> = "volume";
template <>
constexpr std::size_t kFlags<Volume> = 19;

struct BySource {
  template <class Model>
  static std::string GetName(int) {  // NOLINT(readability-identifier-naming): the framework's name
    return kSource<Model>;
  }
};

/// Sees the flags of a builder.
template <class Model>
struct Flags : Model::Builder {
  static auto of(const typename Model::Builder& builder) { return builder.*(&Flags::m_flags); }
};

/// Notes the names of the fields that have a flag.
struct FlaggedNames {
  void operator()(const field::Facts& facts) {
    if (facts.hasFlag) names.push_back(wideToUtf8(facts.name));
  }
  std::vector<std::string> names;
};

template <class Model>
class BuilderFlags : public testing::Test {};

using AllModels = testing::Types<Array, Controller, Controller::Functions, EndDevice, Port, Raid,
                                 RaidLevelSupport, Version, Volume>;
TYPED_TEST_SUITE(BuilderFlags, AllModels, BySource);

TYPED_TEST(BuilderFlags, StandInThePromisedOrderWithASetterEach) {
  FlaggedNames flagged;
  TypeParam::fields(flagged);
  ASSERT_EQ(flagged.names.size(), kFlags<TypeParam>);
  ASSERT_EQ(setters<TypeParam>().size(), kFlags<TypeParam>);
  for (std::size_t place = 0; place < kFlags<TypeParam>; ++place) {
    const auto setter = setters<TypeParam>()[place];
    typename TypeParam::Builder builder;
    setter.call(builder);
    const auto flags = Flags<TypeParam>::of(builder);
    EXPECT_EQ(flags.size(), kFlags<TypeParam>);
    EXPECT_EQ(flags.count(), 1U) << setter.name;
    EXPECT_TRUE(flags.test(place)) << setter.name;
    EXPECT_EQ(flagged.names[place], setter.name);
  }
}

template <class Model>
class AssertingBuilderDeathTest : public testing::Test {};

using AssertingModels = testing::Types<Array, Controller, EndDevice, Port, Raid, RaidLevelSupport, Version>;
TYPED_TEST_SUITE(AssertingBuilderDeathTest, AssertingModels, BySource);

TYPED_TEST(AssertingBuilderDeathTest, StopsTheProcessForAnyForgottenField) {
  const auto failed =
      failedAssertion("m_flags.count() == m_flags.size()", std::string("src\\common\\") + kSource<TypeParam>);
  for (std::size_t left = 0; left < kFlags<TypeParam>; ++left) {
    const auto builder = filledBuilder<TypeParam>(left);
    EXPECT_DEATH(builder.build(), failed) << "without field " << left;
  }
}

TYPED_TEST(AssertingBuilderDeathTest, BuildsWhenEveryFieldIsSetOnceOrTwice) {
  auto builder = complete<TypeParam>();
  for (const auto& setter : setters<TypeParam>()) setter.call(builder);
  builder.build();
  SUCCEED();
}

template <class Model>
class ThrowingBuilder : public testing::Test {};

using ThrowingModels = testing::Types<Volume, Controller::Functions>;
TYPED_TEST_SUITE(ThrowingBuilder, ThrowingModels, BySource);

TYPED_TEST(ThrowingBuilder, RaisesItsExceptionForAnyForgottenField) {
  for (std::size_t left = 0; left < kFlags<TypeParam>; ++left) {
    try {
      filledBuilder<TypeParam>(left).build();
      FAIL() << "built without field " << left;
    } catch (const typename TypeParam::InitializationException& error) {
      const std::invalid_argument& asInvalidArgument = error;
      EXPECT_STREQ(asInvalidArgument.what(), "Not fully initialized");
    }
  }
}

TYPED_TEST(ThrowingBuilder, BuildsWhenEveryFieldIsSetOnceOrTwice) {
  auto builder = complete<TypeParam>();
  for (const auto& setter : setters<TypeParam>()) setter.call(builder);
  EXPECT_NO_THROW(builder.build());
}

TEST(VolumeBuilder, WithoutItsLastFlagSaysSo) {
  EXPECT_THROW(filledBuilder<Volume>(kFlags<Volume> - 1).build(), Volume::InitializationException);
}

TEST(Builder, GivesACopyAndStaysUsable) {
  auto builder = complete<Array>();
  const Array first = builder.build();
  const Array second = builder.name(L"Other").build();
  EXPECT_EQ(first.name(), L"Array_0");
  EXPECT_EQ(second.name(), L"Other");
  EXPECT_EQ(second.id(), first.id());
}

}  // namespace
