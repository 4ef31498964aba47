#include <gtest/gtest.h>

#include <functional>

#include "basic_listener.h"
#include "catalogue.h"
#include "disks_listener.h"
#include "listeners/creation_requests.h"
#include "listeners/order_of_checks.h"
#include "listeners/seen_refusals.h"
#include "mirn_exception.h"
#include "raids_listener.h"
#include "service_exceptions.h"
#include "session_messages.h"
#include "support/by_name.h"
#include "text.h"
#include "volumes_listener.h"

// Every refusal that stands in the row of a route is seen: by the tables of checks, and by a session whose
// reads and actions fail in turn. That no other one is seen, every request of these tests judges.

namespace {

/// Seen where the session is no played one, see mirn_plugin_test.cpp.
bool isSeenElsewhere(const RouteRow& row, const RefusalRow& refusal) {
  return row.route == RouteId::kGetVersion && refusal.words == utf8ToWide(kMsgNoVersion);
}

/// Plays the request of the table, spoilt by `spoil`.
void play(const Checks& checks, const std::function<void(Situation&)>& spoil) {
  Situation situation;
  checks.arrange(situation);
  spoil(situation);
  outcomeOf(*checks.listener(situation.session), situation.request);
}

std::vector<std::string> readsOf(const Checks& checks) {
  Situation situation;
  checks.arrange(situation);
  outcomeOf(*checks.listener(situation.session), situation.request);
  std::vector<std::string> names;
  for (const auto& [name, count] : situation.session.reads) names.push_back(name);
  return names;
}

void playAll(const Checks& checks) {
  for (const Fault& fault : checks.faults) play(checks, fault.spoil);
  for (const std::string& read : readsOf(checks)) {
    play(checks, [&](Situation& s) { s.session.failingRead = read; });
  }
  play(checks, [](Situation& s) { s.session.storeRefuses = true; });
  play(checks, [](Situation& s) {
    s.session.duringAction = [] { throw MirnException(kErrorOperationFailed, kMsgSessionTimeout); };
  });
}

TEST(Refusals, OfEveryRowAreSeen) {
  seenRefusals().clear();
  for (const Checks& checks : allChecks()) playAll(checks);
  for (const RouteRow* row : catalogue()) {
    for (const RefusalRow& refusal : row->refusals) {
      const SeenRefusal wanted{row->route, refusal.errorId, wideToUtf8(refusal.words)};
      EXPECT_TRUE(seenRefusals().count(wanted) > 0 || isSeenElsewhere(*row, refusal))
          << wideToUtf8(row->id) << ": nobody is refused with " << refusal.errorId << ": "
          << wideToUtf8(refusal.words);
    }
  }
}

// What the tables of the listeners' own tests leave out: further faults of one field.

void arrangeNothing(FakeSession&) {}

ServiceObject unsignedOf(std::uint64_t number) {
  ServiceObject value;
  value = number;
  return value;
}

Fault timeoutFault(const std::string& name, const ServiceObject& value, const std::string& outcome) {
  return {name, [value](Situation& s) { s.request.body.member(L"locate_timeout") = value; }, outcome};
}

std::vector<Fault> configFaults() {
  return {
      {"empty", [](Situation& s) { s.request.body = ServiceObject::object(); },
       refused("INVALID_PARAMETER", "Configuration request cannot be empty")},
      timeoutFault("too low", unsignedOf(0),
                   refused("INVALID_PARAMETER", "Timeout value is too low or negative")),
      timeoutFault("too high", unsignedOf(3601), refused("INVALID_PARAMETER", "Timeout value is too high")),
  };
}

std::vector<Fault> nameFaults() {
  const auto bad = [](const char* value, const char* words) {
    return refusedField(words, {"name", value}, "INVALID_PARAMETER", words);
  };
  return {bad("Twenty characters long", "Volume name is too long"),
          bad(" Data", "Volume name cannot start with whitespace"),
          bad("a\\b", "Volume name contains a forbidden character"),
          bad("Taken", "Volume name is already in use")};
}

Fault queryFault(const std::wstring& name, const std::wstring& value, const std::string& words) {
  return {words, [=](Situation& s) { s.request.parameters[name] = value; },
          refused("INVALID_PARAMETER", words)};
}

std::vector<Fault> queryFaults() {
  return {queryFault(L"range", L"all", "Invalid range parameter"),
          queryFault(L"type", L"RAID_6", "Provided RAID level is not supported"),
          queryFault(L"type", L"XYZ", "Invalid RAID level"),
          queryFault(L"range", L"info", "RAID type parameter is supported for the level range only")};
}

ServiceObject journaledRequest() {
  ServiceObject request = disksRequest();
  set(request, {"rwhPolicy", "RWH_JOURNALING_DRIVE"});
  set(request, {"journalingDriveId", "61"});
  return request;
}

Fault unknownDrive(const std::string& words) {
  return refusedField("unknown drive", {"journalingDriveId", "999"}, "OBJECT_NOT_FOUND", words);
}

void arrangeRaid5(FakeSession& session) {
  arrangeSystem(session);
  session.volume(L"1").raidLevel(RaidLevel::RAID_5);
}

ServiceObject timeoutRequest() {
  ServiceObject request;
  request.member(L"locate_timeout") = std::uint64_t{30};
  return request;
}

void arrangeRaid(FakeSession& session) {
  session.raids = {aRaid(L"71")};
  session.raidLevels[L"71"] = {aLevel(RaidLevel::RAID_5)};
}

void arrangeDisk(FakeSession& session) { session.endDevices = {aDisk(L"41")}; }

INSTANTIATE_TEST_SUITE_P(
    Further, OrderOfChecks,
    testing::Values(
        ofOneField(checksOf<BasicListener>("Config", arrangeNothing,
                                           {HttpMethod::kPut, "config", timeoutRequest()}, configFaults())),
        checksOf<RaidsListener>("Raids", arrangeRaid,
                                {HttpMethod::kGet, "", {}, {{L"range", L"level"}, {L"type", L"RAID_5"}}},
                                queryFaults()),
        ofOneField(checksOf<VolumesListener>(
            "Rename", arrangeSystem, {HttpMethod::kPut, "1/name", body({{"name", "Other"}})}, nameFaults())),
        ofOneField(checksOf<VolumesListener>("Create", arrangeSystem, {HttpMethod::kPost, "", disksRequest()},
                                             nameFaults())),
        checksOf<VolumesListener>("Journal", arrangeSystem, {HttpMethod::kPost, "", journaledRequest()},
                                  {unknownDrive("Journaling drive identifier not found")}),
        checksOf<VolumesListener>("NoJournal", arrangeRaid5,
                                  {HttpMethod::kPut, "1/rwh",
                                   body({{"rwhPolicy", "RWH_OFF"}, {"journalingDriveId", "61"}})},
                                  {unknownDrive("Disk identifier not found")}),
        checksOf<DisksListener>(
            "Unmark", arrangeDisk, {HttpMethod::kPut, "41/spare", body({{"action", "UNMARK"}})},
            {{"X8 disk", [](Situation& s) { s.session.disk(L"41").x8(X8Disk::X8_B); },
              refused("Mirn_DISK_INVALID_STATE", "Mark/unmark as spare is not supported for X8 disks")}})),
    ByName());

}  // namespace
