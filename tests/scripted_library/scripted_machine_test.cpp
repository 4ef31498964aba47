#include "scripted_library/scripted_machine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

#include "scripted_library/small_machine.h"

namespace {

using namespace small_machine;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Scope kSystem{VEX_SCOPE_SYSTEM, 0};

constexpr Scope under(VEX_HANDLE controller) { return {VEX_SCOPE_CONTROLLER, controller}; }

class ScriptedMachineTest : public testing::Test {
 protected:
  using List = VEX_STATUS (ScriptedMachine::*)(Scope scope, std::vector<VEX_HANDLE>& found) const;

  std::vector<VEX_HANDLE> listed(List list, Scope scope) const {
    std::vector<VEX_HANDLE> found;
    EXPECT_EQ((m_machine.*list)(scope, found), VEX_STATUS_SUCCESS);
    return found;
  }

  VEX_STATUS statusOf(List list, Scope scope) const {
    std::vector<VEX_HANDLE> found;
    return (m_machine.*list)(scope, found);
  }

  ScriptedMachine m_machine = small_machine::make();
};

TEST_F(ScriptedMachineTest, SystemScopeGivesEverythingInOrderOfAddition) {
  EXPECT_THAT(listed(&ScriptedMachine::controllersIn, kSystem), ElementsAre(kSata, kLyx));
  EXPECT_THAT(listed(&ScriptedMachine::endDevicesIn, kSystem),
              ElementsAre(kMember1, kMember2, kFree1, kFree2, kLyxDisk1, kLyxDisk2, kLyxDisk3));
  EXPECT_THAT(listed(&ScriptedMachine::arraysIn, kSystem), ElementsAre(kArray));
  EXPECT_THAT(listed(&ScriptedMachine::volumesIn, kSystem), ElementsAre(kSystemVolume, kDataVolume));
  EXPECT_EQ(listed(&ScriptedMachine::physIn, kSystem).size(), 7U);
  EXPECT_EQ(listed(&ScriptedMachine::portsIn, kSystem).size(), 14U);
}

TEST_F(ScriptedMachineTest, ControllerScopeGivesItsOwn) {
  EXPECT_THAT(listed(&ScriptedMachine::endDevicesIn, under(kLyx)),
              ElementsAre(kLyxDisk1, kLyxDisk2, kLyxDisk3));
  EXPECT_THAT(listed(&ScriptedMachine::physIn, under(kLyx)),
              ElementsAre(phyOf(kLyxDisk1), phyOf(kLyxDisk2), phyOf(kLyxDisk3)));
  EXPECT_THAT(listed(&ScriptedMachine::arraysIn, under(kSata)), ElementsAre(kArray));
  EXPECT_THAT(listed(&ScriptedMachine::arraysIn, under(kLyx)), IsEmpty());
  EXPECT_THAT(listed(&ScriptedMachine::volumesIn, under(kSata)), ElementsAre(kSystemVolume, kDataVolume));
  EXPECT_THAT(
      listed(&ScriptedMachine::portsIn, {VEX_SCOPE_CONTROLLER_PORTS, kLyx}),
      ElementsAre(controllerPortOf(kLyxDisk1), controllerPortOf(kLyxDisk2), controllerPortOf(kLyxDisk3)));
}

TEST_F(ScriptedMachineTest, ScopeThatDoesNotFitTheKindIsInvalid) {
  EXPECT_EQ(statusOf(&ScriptedMachine::portsIn, under(kSata)), VEX_STATUS_INVALID_SCOPE);
  EXPECT_EQ(statusOf(&ScriptedMachine::controllersIn, under(kSata)), VEX_STATUS_INVALID_SCOPE);
  EXPECT_EQ(statusOf(&ScriptedMachine::endDevicesIn, {VEX_SCOPE_CONTROLLER_PORTS, kSata}),
            VEX_STATUS_INVALID_SCOPE);
  EXPECT_EQ(statusOf(&ScriptedMachine::arraysIn, {3, 0}), VEX_STATUS_INVALID_SCOPE);
  EXPECT_EQ(statusOf(&ScriptedMachine::volumesIn, {VEX_SCOPE_SYSTEM, kSata}), VEX_STATUS_INVALID_SCOPE);
}

TEST_F(ScriptedMachineTest, ScopeHandleMustNameAController) {
  EXPECT_EQ(statusOf(&ScriptedMachine::volumesIn, under(kArray)), VEX_STATUS_INVALID_HANDLE);
}

TEST_F(ScriptedMachineTest, ArrayOverTwoControllersHangsUnderBoth) {
  m_machine.addArray(42, "Spanned", {kFree1, kLyxDisk1});
  EXPECT_THAT(listed(&ScriptedMachine::arraysIn, under(kSata)), ElementsAre(kArray, 42U));
  EXPECT_THAT(listed(&ScriptedMachine::arraysIn, under(kLyx)), ElementsAre(42U));
}

TEST_F(ScriptedMachineTest, PartsFitTogether) {
  EXPECT_EQ(m_machine.endDevices.at(kMember1).arrayHandle, kArray);
  EXPECT_EQ(m_machine.endDevices.at(kLyxDisk1).diskType, VEX_DISK_TYPE_LYX);
  EXPECT_EQ(m_machine.endDevices.at(kLyxDisk1).raidInfoHandle, kLyxRaid);
  EXPECT_EQ(m_machine.arrays.at(kArray).numVolumes, 2U);
  EXPECT_EQ(m_machine.volumes.at(kDataVolume).arrayOrdinal, 1U);
  EXPECT_EQ(m_machine.ports.at(portOf(kFree1)).connectedPortHandle, controllerPortOf(kFree1));
  EXPECT_EQ(m_machine.ports.at(controllerPortOf(kFree1)).connectedPortHandle, portOf(kFree1));
}

TEST_F(ScriptedMachineTest, HandleIsUsedOnceInAList) {
  EXPECT_THROW(m_machine.addController(kSata, VEX_CONTROLLER_TYPE_SATA, 0), std::invalid_argument);
}

TEST_F(ScriptedMachineTest, RemovalKeepsTheOrderAndTheOtherHandles) {
  m_machine.endDevices.remove(kMember2);
  EXPECT_FALSE(m_machine.endDevices.has(kMember2));
  EXPECT_THROW(m_machine.endDevices.at(kMember2), std::out_of_range);
  EXPECT_STREQ(m_machine.endDevices.at(kFree1).uniqueId, "disk-23");
  EXPECT_THAT(listed(&ScriptedMachine::endDevicesIn, under(kSata)), ElementsAre(kMember1, kFree1, kFree2));
}

TEST(SetTextTest, CutsTerminatesAndZeroFills) {
  char field[4] = {'x', 'x', 'x', 'x'};
  setText(field, "ab");
  EXPECT_THAT(field, ElementsAre('a', 'b', '\0', '\0'));
  setText(field, "abcdef");
  EXPECT_STREQ(field, "abc");
}

}  // namespace
