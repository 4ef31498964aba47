#include "controls/simulator_controls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>

#include "answers/answer.h"
#include "answers/json_reader.h"
#include "answers/json_writer.h"
#include "host/answers/refusal_of.h"
#include "vexl2_simulator.h"

namespace host {

namespace {

/// What the functions of the test were called with last, and what they answer.
std::string calledWith;
VEX_STATUS answered = VEX_STATUS_SUCCESS;

VEX_STATUS takeDisk(const char* disk) {
  calledWith = disk;
  return answered;
}

VEX_STATUS takeOrder(const char* operation, std::uint32_t skip, std::uint32_t count, VEX_STATUS status) {
  calledWith = std::string(operation) + ' ' + std::to_string(skip) + ' ' + std::to_string(count) + ' ' +
               std::to_string(status);
  return answered;
}

VEX_STATUS takeBlankDisk(const char* bay, std::uint64_t totalSize, std::uint32_t sectorSize,
                         const char* model, char* id, std::uint32_t size) {
  calledWith =
      std::string(bay) + ' ' + std::to_string(totalSize) + ' ' + std::to_string(sectorSize) + ' ' + model;
  std::strncpy(id, "DISK-77", size);
  return answered;
}

VEX_STATUS tellReason(char* text, std::uint32_t size) {
  std::strncpy(text, "the reason", size);
  return VEX_STATUS_SUCCESS;
}

class SimulatorControlsTest : public testing::Test {
 protected:
  void SetUp() override { answered = VEX_STATUS_SUCCESS; }

  static SimulatorControls controlsWith(const std::map<std::string, void*>& symbols) {
    return SimulatorControls([&](const char* name) {
      const auto found = symbols.find(name);
      return found == symbols.end() ? nullptr : found->second;
    });
  }

  static std::string run(const SimulatorControls& controls, const std::wstring& name, const char* arguments) {
    return writeJson(controls.run(name, readJson(arguments, {8, 100})));
  }

  /// The status of the refusal that a call ends with, and its text.
  static std::pair<int, std::string> refusal(const SimulatorControls& controls, const std::wstring& name,
                                             const char* arguments) {
    const auto refusal = refusalOf([&] { run(controls, name, arguments); });
    return refusal ? std::pair<int, std::string>(refusal->status, refusal->what())
                   : std::pair<int, std::string>();
  }

  template <class Function>
  static void* symbol(Function* function) {
    return reinterpret_cast<void*>(function);
  }

  const SimulatorControls m_controls = controlsWith({{"VexSimFailDisk", symbol(takeDisk)},
                                                     {"VexSimFailCalls", symbol(takeOrder)},
                                                     {"VexSimLoadText", symbol(takeDisk)},
                                                     {"VexSimLastError", symbol(tellReason)}});
};

TEST_F(SimulatorControlsTest, OfALibraryWithoutAnyAreNone) {
  EXPECT_TRUE(SimulatorControls().isEmpty());
  EXPECT_TRUE(controlsWith({}).isEmpty());
  EXPECT_EQ(writeJson(controlsWith({}).describe()), "[]");
}

TEST_F(SimulatorControlsTest, AreThoseWhoseFunctionIsThere) {
  EXPECT_FALSE(m_controls.isEmpty());
  const std::vector<std::wstring> names = m_controls.names();
  EXPECT_EQ(std::count(names.begin(), names.end(), L"fail-disk"), 1);
  EXPECT_EQ(std::count(names.begin(), names.end(), L"pull-disk"), 0);
  EXPECT_EQ(writeJson(controlsWith({{"VexSimFailDisk", symbol(takeDisk)}}).describe()),
            R"([{"arguments":["disk"],"name":"fail-disk"}])");
}

TEST_F(SimulatorControlsTest, HandTheirArgumentsOver) {
  EXPECT_EQ(run(m_controls, L"fail-disk", R"({"disk": "ü-1"})"), "null");
  EXPECT_EQ(calledWith, "ü-1");
  run(m_controls, L"fail-calls", R"({"operation": "VexRescan", "skip": 2, "count": 3, "status": 18})");
  EXPECT_EQ(calledWith, "VexRescan 2 3 18");
  run(m_controls, L"load-scenario", R"({"scenario": {"devices": []}})");
  EXPECT_EQ(calledWith, R"({"devices":[]})");
}

TEST_F(SimulatorControlsTest, AnOrderIsForTheNextCallUnlessItSaysMore) {
  run(m_controls, L"fail-calls", R"({"operation": "VexRescan", "status": 18})");
  EXPECT_EQ(calledWith, "VexRescan 0 1 18");
}

TEST_F(SimulatorControlsTest, TellWhatTheLibrarySays) {
  using Told = std::pair<int, std::string>;
  answered = VEX_STATUS_INVALID_STATE;
  EXPECT_EQ(refusal(m_controls, L"fail-disk", R"({"disk": "a"})"),
            (Told{409,
                  "Item not in appropriate state for action to complete successfully: look at the disk's "
                  "state, which "
                  "is as ordered already or does not allow it"}));
  answered = VEX_STATUS_TIMEOUT;
  EXPECT_EQ(refusal(m_controls, L"fail-disk", R"({"disk": "a"})"),
            (Told{500, "The simulated library answers status 9"}));
  answered = VEX_STATUS_FAILED;
  EXPECT_EQ(refusal(m_controls, L"fail-disk", R"({"disk": "a"})"),
            (Told{500,
                  "Function failed to complete: the change cannot be kept, and the host's standard error "
                  "says why; mend "
                  "that and ask again"}));
  answered = VEX_STATUS_NOT_INITIALIZED;
  EXPECT_EQ(refusal(m_controls, L"fail-disk", R"({"disk": "a"})").first, 503);
  answered = VEX_STATUS_INTERNAL_ERROR;
  EXPECT_EQ(refusal(m_controls, L"fail-disk", R"({"disk": "a"})").first, 500);
  answered = VEX_STATUS_INVALID_PARAMETER;
  EXPECT_EQ(refusal(m_controls, L"load-scenario", R"({"scenario": {}})"), (Told{400, "the reason"}));
}

TEST_F(SimulatorControlsTest, SayWhatIsWrongWithTheDisk) {
  using Told = std::pair<int, std::string>;
  const std::map<VEX_STATUS, Told> expected = {
      {VEX_STATUS_INVALID_DISK, {400, "Invalid Disk: the device is none; name a disk"}},
      {VEX_STATUS_DISK_TOO_SMALL, {400, "The disk is too small for any use: it needs more than 8 MiB"}},
      {VEX_STATUS_INVALID_SECTOR_SIZE, {400, "The sector size is no power of two from 512 on"}}};
  for (const auto& [status, told] : expected) {
    answered = status;
    EXPECT_EQ(refusal(m_controls, L"fail-disk", R"({"disk": "a"})"), told);
  }
}

/// Knows the disk by its serial number alone.
VEX_STATUS takeSerialNumber(const char* disk) {
  calledWith += std::string(disk) + ' ';
  return std::string(disk) == "S-7" ? VEX_STATUS_SUCCESS : VEX_STATUS_INVALID_HANDLE;
}

TEST_F(SimulatorControlsTest, TakeThePublishedIdOfADisk) {
  const SimulatorControls controls = controlsWith({{"VexSimFailDisk", symbol(takeSerialNumber)}});
  DiskNames disks([] { return readJson(R"([{"id": "7", "serialNumber": "S-7"}])", {8, 100}); });
  calledWith.clear();
  controls.run(L"fail-disk", readJson(R"({"disk": "7"})", {8, 100}), &disks);
  EXPECT_EQ(calledWith, "7 S-7 ");
  calledWith.clear();
  EXPECT_THROW(controls.run(L"fail-disk", readJson(R"({"disk": "8"})", {8, 100}), &disks), Refusal);
  EXPECT_EQ(calledWith, "8 ");
}

TEST_F(SimulatorControlsTest, PutABlankDiskIntoABayAndTellItsId) {
  const SimulatorControls controls = controlsWith({{"VexSimInsertBlankDisk", symbol(takeBlankDisk)}});
  EXPECT_EQ(run(controls, L"insert-blank-disk",
                R"({"disk": "a0", "size": 2000000000000, "sectorSize": 4096, "model": "Large"})"),
            R"({"disk":"DISK-77"})");
  EXPECT_EQ(calledWith, "a0 2000000000000 4096 Large");
  run(controls, L"insert-blank-disk", R"({"disk": "a0"})");
  EXPECT_EQ(calledWith, "a0 0 0 ");
  answered = VEX_STATUS_DISK_TOO_SMALL;
  EXPECT_EQ(refusal(controls, L"insert-blank-disk", R"({"disk": "a0"})").first, 400);
}

TEST_F(SimulatorControlsTest, TellWhatACheckNotices) {
  const SimulatorControls controls = controlsWith({{"VexSimCheck", symbol(tellReason)}});
  EXPECT_EQ(run(controls, L"check", "null"), R"({"notice":"the reason"})");
}

TEST_F(SimulatorControlsTest, RefuseWrongArgumentsBeforeTheCall) {
  calledWith = "nothing";
  EXPECT_EQ(refusal(m_controls, L"fail-disk", "{}").first, 400);
  EXPECT_EQ(refusal(m_controls, L"fail-calls", R"({"operation": "VexRescan", "status": 0.5})").first, 400);
  EXPECT_EQ(calledWith, "nothing");
}

}  // namespace

}  // namespace host
