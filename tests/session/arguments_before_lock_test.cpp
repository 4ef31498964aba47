#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <string>

#include "session/lock_record.h"
#include "support/by_name.h"
#include "support/model_samples.h"
#include "support/session_fixture.h"

namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// All that an action can be given by reference.
struct Arguments {
  EndDevice disk;
  std::vector<EndDevice> disks;
  Array array;
  Volume volume;
  Port port;
  std::wstring text;
  std::wstring diskId;
  RwhRequest rwh;
};

/// Handles from `first` on, and whatever else there is by `other`: nothing is the same where both differ.
Arguments argumentsFrom(VEX_HANDLE first, bool other) {
  const auto disk = [first](VEX_HANDLE place) {
    return complete<EndDevice>()
        .id(std::to_wstring(place))
        .handle(first + place)
        .phyHandle(first + place + 10)
        .build();
  };
  return {disk(0),
          {disk(1), disk(2)},
          complete<Array>().handle(first + 3).build(),
          complete<Volume>().handle(first + 4).build(),
          complete<Port>().handle(first + 5).build(),
          other ? L"ANOTHER" : L"NAME",
          other ? L"2" : L"1",
          {{L"drive", first + 6}, other ? RwhPolicy::RWH_JOURNALING_DRIVE : RwhPolicy::RWH_DISTRIBUTED}};
}

constexpr VEX_HANDLE kLow = 100;
constexpr VEX_HANDLE kHigh = 0x80000000;  // above low ones by this

/// A recorded call, with each handle from `kLow` on so much higher: in decimals, or in a record's bytes, the
/// lowest first.
std::string withHighHandles(const std::string& call) {
  const std::regex handle("\\b(1[01][0-9])\\b|(6[4-9a-f]|7[0-9a-f])000000");
  std::string result;
  auto rest = call.begin();
  for (std::sregex_iterator found(call.begin(), call.end(), handle), end; found != end; ++found) {
    result.append(rest, call.begin() + found->position());
    result += (*found)[1].matched ? std::to_string(kHigh + std::stoul((*found)[1]))
                                  : std::string((*found)[2]) + "000080";
    rest = call.begin() + found->position() + found->length();
  }
  return result.append(rest, call.end());
}

struct ArgumentCase {
  const char* name;
  std::function<void(SessionActions&, const Arguments&)> run;
};

constexpr std::uint64_t kSize = 5000;

/// The actions with arguments that can change while they wait.
std::vector<ArgumentCase> argumentCases() {
  return {
      {"Unlock", [](auto& s, auto& a) { s.unlock(23, UserLevel::kUser, a.text); }},
      {"RemoveDisk", [](auto& s, auto& a) { s.removeDisk(a.disk); }},
      {"AddDisks", [](auto& s, auto& a) { s.addDisks(41, a.disks); }},
      {"MarkAsNormal", [](auto& s, auto& a) { s.markAsNormal(a.volume); }},
      {"Rebuild", [](auto& s, auto& a) { s.rebuild(a.volume, a.disk); }},
      {"Initialize", [](auto& s, auto& a) { s.initialize(a.volume); }},
      {"Verify", [](auto& s, auto& a) { s.verify(a.volume, true); }},
      {"CancelVerify", [](auto& s, auto& a) { s.cancelVerify(a.volume); }},
      {"Rename", [](auto& s, auto& a) { s.rename(a.volume, a.text); }},
      {"Expand", [](auto& s, auto& a) { s.expand(a.volume, kSize); }},
      {"SetCachePolicy", [](auto& s, auto& a) { s.setCachePolicy(a.volume, CachePolicy::OFF); }},
      {"ModifyRaidLevel",
       [](auto& s, auto& a) {
         s.modifyRaidLevel(a.volume, StripSize::SIZE_16KB, RaidLevel::RAID_5, kSize, a.disks);
       }},
      {"DeleteVolume", [](auto& s, auto& a) { s.deleteVolume(a.volume); }},
      {"CreateVolume",
       [](auto& s, auto& a) {
         s.createVolume(a.array, a.text, StripSize::SIZE_16KB, RaidLevel::RAID_5, kSize, a.rwh);
       }},
      {"CreateVolumeFromDisks",
       [](auto& s, auto& a) {
         s.createVolumeFromDisks(a.disks, a.text, StripSize::SIZE_16KB, RaidLevel::RAID_5, kSize, a.diskId,
                                 a.rwh);
       }},
      {"SetRwhPolicy", [](auto& s, auto& a) { s.setRwhPolicy(a.volume, a.rwh); }},
      {"Locate", [](auto& s, auto& a) { s.locate(a.port, EnableState::ENABLED); }},
  };
}

class ArgumentsOf : public SessionTest, public testing::WithParamInterface<ArgumentCase> {
 protected:
  void TearDown() override {
    SessionTest::TearDown();
    LockRecord::instance().reset();
  }

  std::string callFor(const Arguments& arguments) {
    GetParam().run(m_session, arguments);
    const Texts calls = textsOf(onlyOf(OperationKind::ACTION, m_library.takeCalls()));
    EXPECT_THAT(calls, SizeIs(1));
    return calls.at(0);
  }
};

TEST_P(ArgumentsOf, AnActionAreTakenBeforeItAsksForTheLock) {
  const Arguments first = argumentsFrom(kLow, false);
  const Arguments second = argumentsFrom(2 * kLow, true);
  const std::string expected = callFor(first);
  ASSERT_NE(callFor(second), expected);
  Arguments arguments = first;
  LockRecord::instance().atTheNextRequest([&] { arguments = second; });
  EXPECT_EQ(callFor(arguments), expected);
  EXPECT_EQ(arguments.text, second.text) << "they did change";
}

TEST_P(ArgumentsOf, AnActionMayHaveHandlesOfTheWholeRange) {
  const std::string low = callFor(argumentsFrom(kLow, false));
  const std::string expected = withHighHandles(low);
  EXPECT_EQ(callFor(argumentsFrom(kHigh + kLow, false)), expected);
  EXPECT_EQ(expected == low, std::string(GetParam().name) == "Unlock") << "it has no handle from here";
}

INSTANTIATE_TEST_SUITE_P(Actions, ArgumentsOf, testing::ValuesIn(argumentCases()), ByName());

// What an action refuses by itself

struct RefusalCase {
  const char* name;
  std::function<void(SessionActions&)> run;
};

class RefusalOf : public SessionTest, public testing::WithParamInterface<RefusalCase> {};

TEST_P(RefusalOf, AnActionComesBeforeItAsksForTheLock) {
  LockRecord::instance().reset();
  EXPECT_ANY_THROW(GetParam().run(m_session));
  EXPECT_THAT(LockRecord::instance().take(), IsEmpty());
  EXPECT_THAT(m_library.calls(), IsEmpty());
}

const std::wstring kHalfACharacter(1, wchar_t(0xD800));

INSTANTIATE_TEST_SUITE_P(
    Actions, RefusalOf,
    testing::Values(
        RefusalCase{"RemoveDisk",
                    [](auto& s) { s.removeDisk(complete<EndDevice>().managedHotplug(false).build()); }},
        RefusalCase{"UnlockTooLong", [](auto& s) { s.unlock(23, UserLevel::kUser, std::wstring(33, L'p')); }},
        RefusalCase{"UnlockNoText", [](auto& s) { s.unlock(23, UserLevel::kUser, kHalfACharacter); }},
        RefusalCase{"Rename", [](auto& s) { s.rename(complete<Volume>().build(), kHalfACharacter); }},
        RefusalCase{"CreateVolume",
                    [](auto& s) {
                      s.createVolume(complete<Array>().build(), kHalfACharacter, StripSize::SIZE_16KB,
                                     RaidLevel::RAID_5, kSize, {});
                    }},
        RefusalCase{"CreateVolumeFromDisks",
                    [](auto& s) {
                      s.createVolumeFromDisks({}, kHalfACharacter, StripSize::SIZE_16KB, RaidLevel::RAID_5,
                                              kSize, L"", {});
                    }}),
    ByName());

}  // namespace
