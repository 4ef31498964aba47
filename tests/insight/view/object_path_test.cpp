#include "view/object_path.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "insight/machine/small_machine.h"

namespace insight {
namespace {

using testing::ElementsAre;

const ObjectRef kController{"controller", L"C", L"Controller"};
const ObjectRef kArray{"array", L"A", L"Array_0000"};
const ObjectRef kVolume{"volume", L"V", L"Data"};

TEST(ObjectPath, LeadsFromTheControllerDown) {
  const MachineView machine = smallMachine();
  EXPECT_THAT(pathTo(machine, machine.volumes.front()), ElementsAre(kController, kArray, kVolume));
  EXPECT_THAT(pathTo(machine, machine.arrays.front()), ElementsAre(kController, kArray));
  EXPECT_THAT(pathTo(machine, machine.disks.back()),
              ElementsAre(kController, ObjectRef{"disk", L"S", L"SATA N-S"}));
}

TEST(ObjectPath, LeavesOutWhatIsNotInThePicture) {
  MachineView machine = smallMachine();
  machine.controllers.clear();
  machine.arrays.front().controllerIds.clear();
  machine.index();
  EXPECT_THAT(pathTo(machine, machine.arrays.front()), ElementsAre(kArray));
  machine.arrays.clear();
  machine.index();
  EXPECT_THAT(pathTo(machine, machine.volumes.front()), ElementsAre(kVolume));
}

TEST(ObjectPath, FindsObjectsByTypeAndId) {
  MachineView machine = smallMachine();
  machine.portsOfController[L"C"] = {L"P"};
  EXPECT_EQ(objectNamed(machine, L"volume", L"V"), kVolume);
  EXPECT_EQ(objectNamed(machine, L"array", L"A"), kArray);
  EXPECT_EQ(objectNamed(machine, L"controller", L"C"), kController);
  EXPECT_EQ(objectNamed(machine, L"disk", L"S"), (ObjectRef{"disk", L"S", L"SATA N-S"}));
  EXPECT_EQ(objectNamed(machine, L"port", L"P"), (ObjectRef{"port", L"P", L"P"}));
  EXPECT_EQ(objectNamed(machine, L"service", L"service"), (ObjectRef{"service", L"", L"service"}));
  for (const wchar_t* const type :
       {L"volume", L"array", L"controller", L"disk", L"port", L"service", L"moon"}) {
    EXPECT_FALSE(objectNamed(machine, type, L"NONE").has_value());
  }
}

}  // namespace
}  // namespace insight
