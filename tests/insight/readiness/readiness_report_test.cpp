#include "readiness/readiness_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "insight/readiness/made_past.h"
#include "support/by_name.h"

namespace insight {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

/// The small machine and its past, to be spoilt.
struct Scene {
  MachineView machine = smallMachine();
  MachinePast past = quietPast();
  std::int64_t verifiedWithinDays = kUsualVerifiedWithinDays;

  VolumeView& volume() { return machine.volumes.front(); }
  DiskView& member() { return machine.disks.front(); }
  DiskView& spare() { return machine.disks.back(); }

  ReadinessReport report() {
    machine.index();
    ReadinessFacts facts{machine, kAskedMs, verifiedWithinDays, past, {}};
    return readinessOf(facts);
  }
};

/// "KIND SEVERITY OBJECT…: OPERATION ARGUMENTS…" of each line.
std::vector<std::string> linesOf(const ReadinessReport& report) {
  std::vector<std::string> lines;
  for (const ReadinessLine& line : report.lines) {
    std::string text = line.kind + ' ' + std::string(severityWord(line.severity));
    for (const ObjectRef& object : line.objects) {
      text += ' ' + object.type + ' ' + std::string(object.id.begin(), object.id.end());
    }
    for (const NextStep& step : line.steps) {
      text += (&step == &line.steps.front() ? ": " : ", ") + step.operation;
      for (const auto& [name, value] : step.arguments) {
        text += ' ' + name + '=' + std::string(value.begin(), value.end());
      }
    }
    lines.push_back(text);
  }
  return lines;
}

const CheckResult& checkOf(const ReadinessReport& report, const std::string& kind) {
  for (const CheckResult& check : report.checks) {
    if (check.kind == kind) return check;
  }
  throw std::out_of_range(kind);
}

constexpr char kVerifyV[] = ": verifyVolume action=START repair=false volumeId=V";

TEST(Readiness, OfASoundMachineWithAQuietPastHasNoLines) {
  const ReadinessReport report = Scene().report();
  EXPECT_THAT(linesOf(report), IsEmpty());
  EXPECT_EQ(report.severity, Severity::kOk);
  EXPECT_EQ(report.position.revision, 7U);
  EXPECT_EQ(report.takenAt, kSmallMachineTakenAt);
  EXPECT_EQ(report.historyFromMs, kAskedMs - 730 * kDayMs);
  ASSERT_THAT(report.checks, SizeIs(5));
  for (const CheckResult& check : report.checks) {
    EXPECT_FALSE(check.hasLines) << check.kind;
    EXPECT_THAT(check.doubt, IsEmpty()) << check.kind;
  }
  ASSERT_THAT(report.exposure, SizeIs(12));
  EXPECT_EQ(report.exposure.front().month, "2022-12");
  EXPECT_EQ(report.exposure.back().month, "2023-11");
  for (const ExposedMonth& month : report.exposure) EXPECT_EQ(month.exposedMs, 0) << month.month;
}

struct SceneCase {
  const char* name;
  void (*spoil)(Scene& scene);
  std::vector<std::string> lines;
};

void PrintTo(const SceneCase& row, std::ostream* stream) { *stream << row.name; }

class SpoiltScene : public testing::TestWithParam<SceneCase> {};

TEST_P(SpoiltScene, HasItsLines) {
  Scene scene;
  GetParam().spoil(scene);
  const ReadinessReport report = scene.report();
  EXPECT_EQ(linesOf(report), GetParam().lines);
  for (const ReadinessLine& line : report.lines) {
    EXPECT_TRUE(checkOf(report, line.kind).hasLines);
    EXPECT_GE(report.severity, line.severity);
  }
}

void loseSpare(Scene& scene) { scene.machine.disks.pop_back(); }

void useRaid0(Scene& scene) { scene.volume().level = L"RAID_0"; }

const std::string kUncovered = "no-spare-fits warning disk D0 disk D1 disk D2: setDiskSpare action=MARK";

INSTANTIATE_TEST_SUITE_P(
    Spares, SpoiltScene,
    testing::Values(
        SceneCase{"None", loseSpare, {kUncovered}},
        SceneCase{"TooSmall", [](Scene& s) { --s.spare().totalBytes; }, {kUncovered}},
        SceneCase{"NotSound", [](Scene& s) { s.spare().state = L"SMART_EVENT_TRIGGERED"; }, {kUncovered}},
        SceneCase{"NoneButNoRedundancy",
                  [](Scene& s) {
                    loseSpare(s);
                    useRaid0(s);
                  },
                  {}},
        SceneCase{"NoneForThoseThatAreLeft",
                  [](Scene& s) {
                    loseSpare(s);
                    s.member().state = L"MISSING";
                  },
                  {"no-spare-fits warning disk D1 disk D2: setDiskSpare action=MARK"}}),
    ByName());

void verifyAgo(Scene& scene, std::int64_t agoMs) { scene.past.jobs = {endedJob("verify", agoMs)}; }

const std::string kNotVerified = std::string("not-verified warning volume V") + kVerifyV;

INSTANTIATE_TEST_SUITE_P(
    Verification, SpoiltScene,
    testing::Values(
        SceneCase{"Never", [](Scene& s) { s.past.jobs.clear(); }, {kNotVerified}},
        SceneCase{"JustInTime", [](Scene& s) { verifyAgo(s, 30 * kDayMs); }, {}},
        SceneCase{"JustTooLongAgo", [](Scene& s) { verifyAgo(s, 30 * kDayMs + 1); }, {kNotVerified}},
        SceneCase{"WithinMoreDays",
                  [](Scene& s) {
                    verifyAgo(s, 30 * kDayMs + 1);
                    s.verifiedWithinDays = 31;
                  },
                  {}},
        SceneCase{
            "LatelyAndLongAgo", [](Scene& s) { s.past.jobs.push_back(endedJob("verify", 40 * kDayMs)); }, {}},
        SceneCase{"NotToTheEnd", [](Scene& s) { s.past.jobs.front().outcome = "cancelled"; }, {kNotVerified}},
        SceneCase{"AnotherVolume", [](Scene& s) { s.past.jobs.front().object.id = L"W"; }, {kNotVerified}},
        SceneCase{
            "AnotherWork", [](Scene& s) { s.past.jobs = {endedJob("rebuild", kDayMs)}; }, {kNotVerified}},
        SceneCase{"UnderWay",
                  [](Scene& s) {
                    s.past.jobs.clear();
                    s.machine.work.push_back({L"V", L"VERIFYING"});
                  },
                  {"not-verified warning volume V"}},
        SceneCase{"NothingToHoldItAgainst",
                  [](Scene& s) {
                    s.past.jobs.clear();
                    useRaid0(s);
                  },
                  {}},
        SceneCase{"InAYoungHistory",
                  [](Scene& s) {
                    s.past.jobs.clear();
                    s.past.jobsFromMs = kAskedMs - 29 * kDayMs;
                  },
                  {std::string("not-verified info volume V") + kVerifyV}}),
    ByName());

/// All of one model; the firmware of each.
void load(Scene& scene, const std::vector<std::wstring>& versions) {
  for (std::size_t i = 0; i < versions.size(); ++i) {
    scene.machine.disks[i].model = L"Model";
    scene.machine.disks[i].firmware = versions[i];
    scene.machine.ports.push_back({L"P" + std::to_wstring(i), scene.machine.disks[i].id, {}});
  }
}

INSTANTIATE_TEST_SUITE_P(
    Firmware, SpoiltScene,
    testing::Values(
        SceneCase{"One",
                  [](Scene& s) {
                    load(s, {L"1.0", L"1.0", L"1.0", L"1.0"});
                  },
                  {}},
        SceneCase{"TwoOfOneModel",
                  [](Scene& s) {
                    load(s, {L"1.0", L"1.1", L"1.0", L"1.0"});
                  },
                  {"mixed-firmware info disk D1: locatePort portId=P1 state=ENABLED"}},
        SceneCase{
            "ThreeOfOneModel",
            [](Scene& s) {
              load(s, {L"1.0", L"1.1", L"1.2", L"1.2"});
            },
            {"mixed-firmware info disk D0 disk D1: locatePort portId=P0 state=ENABLED, locatePort portId=P1 "
             "state=ENABLED"}},
        SceneCase{
            "HalfAndHalf",
            [](Scene& s) {
              load(s, {L"1.0", L"1.1", L"1.0", L"1.1"});
            },
            {"mixed-firmware info disk D0 disk D2: locatePort portId=P0 state=ENABLED, locatePort portId=P2 "
             "state=ENABLED"}},
        SceneCase{"OfTwoModels",
                  [](Scene& s) {
                    load(s, {L"1.0", L"1.1", L"1.0", L"1.0"});
                    s.machine.disks[1].model = L"Other";
                  },
                  {}},
        SceneCase{"NotTold",
                  [](Scene& s) {
                    load(s, {L"1.0", L"", L"1.0", L"1.0"});
                  },
                  {}},
        SceneCase{"WithoutAPort",
                  [](Scene& s) {
                    load(s, {L"1.0", L"1.1", L"1.0", L"1.0"});
                    s.machine.ports.clear();
                  },
                  {"mixed-firmware info disk D1"}}),
    ByName());

void expose(Scene& scene, const char* kind, std::int64_t agoMs, std::optional<std::int64_t> endedAgoMs) {
  const auto cleared = endedAgoMs ? std::optional<std::int64_t>(kAskedMs - *endedAgoMs) : std::nullopt;
  scene.past.alarms.push_back(alarmOfVolume(kind, kAskedMs - agoMs, cleared));
}

INSTANTIATE_TEST_SUITE_P(
    Exposure, SpoiltScene,
    testing::Values(SceneCase{"OnceWithASpareNow",
                              [](Scene& s) { expose(s, "volume-degraded", 3 * kDayMs, 2 * kDayMs); },
                              {std::string("exposed info volume V") + kVerifyV}},
                    SceneCase{"OnceWithoutASpareNow",
                              [](Scene& s) {
                                expose(s, "volume-degraded", 3 * kDayMs, 2 * kDayMs);
                                loseSpare(s);
                              },
                              {kUncovered, "exposed info volume V: setDiskSpare action=MARK"}},
                    SceneCase{"Failed",
                              [](Scene& s) { expose(s, "volume-failed", 3 * kDayMs, 2 * kDayMs); },
                              {std::string("exposed info volume V") + kVerifyV}},
                    SceneCase{"Now",
                              [](Scene& s) {
                                expose(s, "volume-degraded", kHourMs, {});
                                s.volume().state = L"DEGRADED";
                              },
                              {"exposed warning volume V: rebuildVolume volumeId=V"}},
                    SceneCase{"NowAndBeingRebuilt",
                              [](Scene& s) {
                                expose(s, "volume-degraded", kHourMs, {});
                                s.machine.work.push_back({L"V", L"REBUILDING"});
                              },
                              {"exposed warning volume V"}},
                    SceneCase{"LongerAgoThanIsTold",
                              [](Scene& s) { expose(s, "volume-degraded", 400 * kDayMs, 399 * kDayMs); },
                              {}},
                    SceneCase{"ByALevelThatHasNone",
                              [](Scene& s) {
                                expose(s, "volume-failed", 3 * kDayMs, 2 * kDayMs);
                                useRaid0(s);
                              },
                              {}},
                    SceneCase{"OfAVolumeThatHasGone",
                              [](Scene& s) {
                                expose(s, "volume-degraded", 3 * kDayMs, 2 * kDayMs);
                                s.past.alarms.back().cause.object.id = L"GONE";
                              },
                              {}}),
    ByName());

/// Rebuilds that took so many hours, the last one first.
void rebuild(Scene& scene, const std::vector<int>& hours, const wchar_t* volume = L"V") {
  std::int64_t agoMs = kDayMs;
  for (const int each : hours) {
    scene.past.jobs.push_back(endedJob("rebuild", agoMs += kDayMs, each * kHourMs));
    scene.past.jobs.back().object.id = volume;
  }
}

/// Another volume that takes as many bytes of each of its disks, and so many more.
void addVolume(Scene& scene, std::uint64_t more) {
  constexpr std::uint64_t kTwoGibibytes = std::uint64_t{2} << 30U;
  scene.volume().totalBytes = kTwoGibibytes;
  VolumeView other = scene.volume();
  other.id = L"W";
  other.name = L"Other";
  other.level = L"RAID_1";
  other.totalBytes = kTwoGibibytes / 2 + more;
  scene.machine.volumes.push_back(other);
  scene.past.jobs.push_back(endedJob("verify", kDayMs));
  scene.past.jobs.back().object.id = L"W";
}

const std::string kSlower = std::string("rebuilds-slower warning volume V") + kVerifyV;

INSTANTIATE_TEST_SUITE_P(Rebuilds, SpoiltScene,
                         testing::Values(SceneCase{"Slower",
                                                   [](Scene& s) {
                                                     rebuild(s, {3, 3, 2, 2});
                                                   },
                                                   {kSlower}},
                                         SceneCase{"SlowerThanTheMedian",
                                                   [](Scene& s) {
                                                     rebuild(s, {4, 3, 9, 2, 2, 1});
                                                   },
                                                   {kSlower}},
                                         SceneCase{"TooFew",
                                                   [](Scene& s) {
                                                     rebuild(s, {9, 9, 1});
                                                   },
                                                   {}},
                                         SceneCase{"OneThatWasSlow",
                                                   [](Scene& s) {
                                                     rebuild(s, {9, 2, 2, 2});
                                                   },
                                                   {}},
                                         SceneCase{"NotSoMuchSlower",
                                                   [](Scene& s) {
                                                     rebuild(s, {14, 14, 10, 10});
                                                   },
                                                   {}},
                                         SceneCase{"Faster",
                                                   [](Scene& s) {
                                                     rebuild(s, {1, 1, 3, 3});
                                                   },
                                                   {}},
                                         SceneCase{"NotSeenToTheirEnd",
                                                   [](Scene& s) {
                                                     rebuild(s, {3, 3, 2, 2});
                                                     for (Job& job : s.past.jobs) job.isEndUnseen = true;
                                                     s.past.jobs.front().isEndUnseen = false;
                                                   },
                                                   {}},
                                         SceneCase{"OfWhichNobodySawTheStart",
                                                   [](Scene& s) {
                                                     rebuild(s, {3, 3, 2, 2});
                                                     s.past.jobs.back().startMs.reset();
                                                   },
                                                   {}},
                                         SceneCase{"NotCompleted",
                                                   [](Scene& s) {
                                                     rebuild(s, {3, 3, 2, 2});
                                                     s.past.jobs.back().outcome = "failed";
                                                   },
                                                   {}},
                                         SceneCase{"OfAVolumeThatHasGone",
                                                   [](Scene& s) {
                                                     rebuild(s, {3, 3, 2, 2}, L"GONE");
                                                   },
                                                   {}},
                                         SceneCase{"OfLikeSize",
                                                   [](Scene& s) {
                                                     addVolume(s, 0);
                                                     rebuild(s, {3, 3}, L"W");
                                                     rebuild(s, {2, 2});
                                                   },
                                                   {std::string("rebuilds-slower warning volume V volume W") +
                                                    kVerifyV +
                                                    ", verifyVolume action=START repair=false volumeId=W"}},
                                         SceneCase{"OfOtherSize",
                                                   [](Scene& s) {
                                                     addVolume(s, std::uint64_t{1} << 30U);
                                                     rebuild(s, {3, 3}, L"W");
                                                     rebuild(s, {2, 2});
                                                   },
                                                   {}},
                                         SceneCase{"OfOneOfTwoOfLikeSize",
                                                   [](Scene& s) {
                                                     addVolume(s, 0);
                                                     rebuild(s, {3, 3, 2, 2});
                                                     rebuild(s, {3, 3, 3}, L"W");
                                                   },
                                                   {kSlower}}),
                         ByName());

TEST(Readiness, TellsTheNumbersThatASentenceStandsOn) {
  Scene scene;
  loseSpare(scene);
  load(scene, {L"1.0", L"1.1", L"1.0"});
  expose(scene, "volume-degraded", 3 * kDayMs, 3 * kDayMs - 90 * 60 * 1000);
  verifyAgo(scene, 40 * kDayMs);
  rebuild(scene, {5, 4, 2, 2});
  const ReadinessReport report = scene.report();
  ASSERT_THAT(report.lines, SizeIs(5));
  EXPECT_EQ(report.lines[0].text, "No spare can take over from a disk of array Array_0000.");
  EXPECT_EQ(report.lines[0].details.at("array").at("name"), "Array_0000");
  EXPECT_EQ(report.lines[0].details.at("volumes").at(0).at("name"), "Data");
  EXPECT_EQ(report.lines[1].text, "Volume Data was verified last 40 days ago.");
  EXPECT_EQ(report.lines[1].details.at("verifiedAt"), "2023-10-05T22:13:21.000Z");
  EXPECT_EQ(report.lines[2].text,
            "Rebuilds of Data take longer: the last 2 took 14400.00 s, the 2 before them 7200.00 s.");
  EXPECT_EQ(report.lines[2].details,
            (boost::json::object{
                {"rebuilds", 4}, {"earlierSeconds", 7200}, {"lastSeconds", 14400}, {"ratio", 2.0}}));
  EXPECT_EQ(report.lines[3].text, "Disks of the model Model have 2 versions of firmware; most have 1.0.");
  EXPECT_EQ(report.lines[3].details.at("firmware").at(1),
            (boost::json::object{{"version", "1.1"}, {"disks", 1}}));
  EXPECT_EQ(report.lines[4].text, "Volume Data lacked redundancy for 1.5 hours in 12 months.");
  EXPECT_EQ(report.lines[4].details.at("exposedSeconds"), 5400);
  EXPECT_EQ(report.severity, Severity::kWarning);
}

TEST(Readiness, NeverSeenVerifiedIsNotTheSameAsUnknown) {
  Scene scene;
  scene.past.jobs.clear();
  ReadinessReport report = scene.report();
  EXPECT_TRUE(report.lines.at(0).details.at("verifiedAt").is_null());
  EXPECT_THAT(report.lines.at(0).text, HasSubstr("never seen verified"));
  EXPECT_THAT(checkOf(report, "not-verified").doubt, IsEmpty());
  scene.past.jobsFromMs = kAskedMs - kDayMs;
  report = scene.report();
  EXPECT_EQ(report.lines.at(0).details.at("verifiedAt"), "unknown");
  EXPECT_THAT(report.lines.at(0).text, HasSubstr("is not known"));
  EXPECT_EQ(checkOf(report, "not-verified").doubt,
            "The history tells of jobs since 2023-11-13T22:13:21.000Z only.");
}

TEST(Readiness, WithoutAPastTellsWhyPartsAreUnknown) {
  MachineView machine = smallMachine();
  machine.disks.pop_back();
  machine.index();
  ReadinessFacts facts{machine, kAskedMs, kUsualVerifiedWithinDays, {}, "No history is kept."};
  const ReadinessReport report = readinessOf(facts);
  EXPECT_THAT(linesOf(report), ElementsAre(kUncovered));
  for (const CheckResult& check : report.checks) {
    const bool isOfMachine = check.kind == "no-spare-fits" || check.kind == "mixed-firmware";
    EXPECT_EQ(check.doubt, isOfMachine ? "" : "No history is kept.") << check.kind;
  }
  EXPECT_FALSE(report.historyFromMs);
  ASSERT_THAT(report.exposure, SizeIs(12));
  for (const ExposedMonth& month : report.exposure) EXPECT_FALSE(month.exposedMs) << month.month;
}

TEST(Readiness, OfAnOldPictureIsToldWithAWarningAheadOfIt) {
  Scene scene;
  loseSpare(scene);
  scene.machine.failedAt = *scene.machine.takenAt + 1;
  const ReadinessReport report = scene.report();
  EXPECT_THAT(linesOf(report), ElementsAre("picture-old unknown service : rescan", kUncovered));
  EXPECT_EQ(report.severity, Severity::kUnknown);
}

TEST(Readiness, BeforeTheFirstPictureIsUnknown) {
  Scene scene;
  scene.machine = {};
  const ReadinessReport report = scene.report();
  EXPECT_EQ(report.severity, Severity::kUnknown);
  for (const CheckResult& check : report.checks) {
    EXPECT_EQ(check.doubt, "There is no picture of the machine yet.") << check.kind;
  }
}

}  // namespace
}  // namespace insight
