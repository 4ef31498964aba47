#ifndef MIRN_TESTS_SIMULATOR_WORKBENCH_FIXTURE_H
#define MIRN_TESTS_SIMULATOR_WORKBENCH_FIXTURE_H

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <string>
#include <vector>

#include "simulator/workbench.h"
#include "vexl2_simulator.h"

/// The library as its callers see it, started on the workbench with a clock that only the test moves. Objects
/// are named by their scenario ids. The library checks its machine at every look of a test, after every step
/// of the clock and after each test.
class Workbench : public testing::Test {
 public:
  void SetUp() override { start(kWorkbench); }

  void start(const char* scenario) {
    ASSERT_EQ(VexSimClearFaults(), 0U);
    ASSERT_EQ(VexSimSetClockSpeed(0), 0U);
    ASSERT_EQ(VexSimCapEventWait(0), 0U);
    ASSERT_EQ(VexSimLoadText(scenario), 0U) << lastError();
    ASSERT_EQ(VexInitialize(), 0U);
    openSession();
  }

  void openSession() { ASSERT_EQ(VexSessionOpen(&m_session), 0U); }

  void TearDown() override {
    check();
    VexSimClearFaults();
    EXPECT_EQ(VexFinalize(), 0U);
  }

  /// The machine's own rules hold.
  static void check() {
    char text[256] = "";
    EXPECT_EQ(VexSimCheck(text, sizeof(text)), 0U) << text;
  }

  static std::string lastError() {
    char text[512] = "";
    VexSimLastError(text, sizeof(text));
    return text;
  }

  static void pass(std::uint64_t milliseconds) {
    ASSERT_EQ(VexSimAdvanceClock(milliseconds), 0U);
    check();
  }

  VEX_HANDLE session() const { return m_session; }

  std::vector<VEX_HANDLE> handles(decltype(&VexGetVolumeHandles) operation, VEX_SCOPE_TYPE scope = 0,
                                  VEX_HANDLE scopeHandle = 0) const {
    check();
    std::uint32_t count = 0;
    const VEX_STATUS status = operation(m_session, scope, scopeHandle, nullptr, &count);
    EXPECT_EQ(status, count == 0 ? 0U : 13U);
    std::vector<VEX_HANDLE> result(count);
    EXPECT_EQ(operation(m_session, scope, scopeHandle, result.data(), &count), 0U);
    return result;
  }

  /// The record of the object with this id; a zeroed one when none is listed.
  VEX_CONTROLLER_INFO controller(const std::string& id) const {
    return find<VEX_CONTROLLER_INFO>(id, VexGetControllerHandles, VexGetControllerInfo);
  }
  VEX_END_DEVICE_INFO disk(const std::string& id) const {
    return find<VEX_END_DEVICE_INFO>(id, VexGetEndDeviceHandles, VexGetEndDeviceInfo);
  }
  VEX_ARRAY_INFO array(const std::string& id) const {
    return find<VEX_ARRAY_INFO>(id, VexGetArrayHandles, VexGetArrayInfo);
  }
  VEX_VOLUME_INFO volume(const std::string& id) const {
    return find<VEX_VOLUME_INFO>(id, VexGetVolumeHandles, VexGetVolumeInfo);
  }
  VEX_PORT_INFO port(const std::string& id) const {
    return find<VEX_PORT_INFO>(id, VexGetPortHandles, VexGetPortInfo);
  }

  /// The volume with this name; a zeroed record when there is none.
  VEX_VOLUME_INFO volumeNamed(const std::string& name) const {
    for (const VEX_HANDLE handle : handles(VexGetVolumeHandles)) {
      VEX_VOLUME_INFO info = {};
      EXPECT_EQ(VexGetVolumeInfo(m_session, handle, &info), 0U);
      if (name == info.name) return info;
    }
    return {};
  }

  VEX_HANDLE diskHandle(const std::string& id) const { return disk(id).endDeviceHandle; }
  VEX_HANDLE arrayHandle(const std::string& id) const { return array("array " + id).arrayHandle; }
  VEX_HANDLE volumeHandle(const std::string& id) const { return volume("volume " + id).volumeHandle; }

  /// The state of the volume of the workbench.
  std::uint32_t stateOf(const std::string& id) const { return volume("volume " + id).state; }

  std::vector<VEX_HANDLE> diskHandles(std::initializer_list<const char*> ids) const {
    std::vector<VEX_HANDLE> result;
    for (const char* const id : ids) result.push_back(diskHandle(id));
    return result;
  }

  /// The whole machine as the text of a scenario.
  static std::string machine() {
    std::uint32_t size = 0;
    EXPECT_EQ(VexSimSaveText(nullptr, &size), 13U);
    std::string text(size, '\0');
    EXPECT_EQ(VexSimSaveText(text.data(), &size), 0U);
    return text;
  }

  VEX_HANDLE phyOf(const std::string& diskId) const {
    const VEX_HANDLE wanted = diskHandle(diskId);
    for (const VEX_HANDLE handle : handles(VexGetPhyHandles)) {
      VEX_PHY_INFO info = {};
      EXPECT_EQ(VexGetPhyInfo(m_session, handle, &info), 0U);
      if (info.endDeviceHandle == wanted) return handle;
    }
    return 0;
  }

 private:
  template <class Info>
  Info find(const std::string& id, decltype(&VexGetVolumeHandles) list,
            VEX_STATUS (*read)(VEX_HANDLE, VEX_HANDLE, Info*)) const {
    for (const VEX_HANDLE handle : handles(list)) {
      Info info = {};
      EXPECT_EQ(read(m_session, handle, &info), 0U);
      if (id == info.uniqueId) return info;
    }
    return {};
  }

  VEX_HANDLE m_session = 0;
};

#endif
