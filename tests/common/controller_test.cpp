#include "controller.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/lines_of.h"
#include "support/model_samples.h"

namespace {

using Lines = std::vector<std::string>;

TEST(PublishedController, HasEveryKeyAndNoOther) {
  Controller controller = complete<Controller>().build();
  controller.setRaidId(L"61");
  EXPECT_EQ(linesOf(controller.toServiceObject()), (Lines{
                                                       "availableDevices = 7",
                                                       "availableDisks = 6",
                                                       "deviceId = \"0x2822\"",
                                                       "disableESataSpanning = true",
                                                       "hardwareRevisionId = 4",
                                                       "id = \"11\"",
                                                       "mode = \"RAID\"",
                                                       "name = \"Controller A\"",
                                                       "nvsramSupported = true",
                                                       "preboot.loaded = true",
                                                       "preboot.managerVersion = \"3.4\"",
                                                       "preboot.twoTbDiskSupport = true",
                                                       "preboot.twoTbVolumeSupport = false",
                                                       "raidId = \"61\"",
                                                       "readPatrol.enabled = true",
                                                       "readPatrol.supported = true",
                                                       "rohi.enabled = true",
                                                       "rohi.supported = false",
                                                       "subClassCode = 7",
                                                       "subSystemId = \"0x0\"",
                                                       "subVendorId = \"0x1d\"",
                                                       "supportedFunctions.addDisksToArray = true",
                                                       "supportedFunctions.arrayCreate = false",
                                                       "supportedFunctions.markAsNormal = false",
                                                       "supportedFunctions.markAsSpare = false",
                                                       "supportedFunctions.portLocate = true",
                                                       "supportedFunctions.volumeCancelVerify = true",
                                                       "supportedFunctions.volumeDelete = true",
                                                       "supportedFunctions.volumeModify = true",
                                                       "supportedFunctions.volumeRename = false",
                                                       "supportedFunctions.volumeSetCachePolicy = false",
                                                       "type = \"Lyx\"",
                                                       "vendorId = \"0x8abc\"",
                                                       "version = \"1.2\"",
                                                       "xor.enabled = false",
                                                       "xor.supported = true",
                                                   }));
}

TEST(PublishedController, HasAnEmptyRaidIdWithoutRaid) {
  const auto form = complete<Controller>().raidHandle(0).build().toServiceObject();
  EXPECT_EQ(linesOf(form.member(L"raidId")), Lines{"\"\""});
}

TEST(PublishedController, WritesPciNumbersInLowerCaseHexWithoutPadding) {
  const auto form =
      complete<Controller>().pciIds({0, 0xA, 0xFFFF, 255, 0, 0x10000}).build().toServiceObject();
  EXPECT_EQ(form.member(L"vendorId").toString(), L"0x0");
  EXPECT_EQ(form.member(L"deviceId").toString(), L"0xa");
  EXPECT_EQ(form.member(L"subSystemId").toString(), L"0xffff");
  EXPECT_EQ(form.member(L"subVendorId").toString(), L"0x10000");
  EXPECT_EQ(linesOf(form.member(L"hardwareRevisionId")), Lines{"255"});
  EXPECT_EQ(linesOf(form.member(L"subClassCode")), Lines{"0"});
}

TEST(ControllerSchema, TellsPciNumbersAsTextsAndPartsAsObjects) {
  const auto properties = Controller::schema().member(L"properties");
  EXPECT_EQ(linesOf(properties.member(L"vendorId")),
            (Lines{R"(description = "PCI number of its maker.")", R"(pattern = "^0x[0-9a-f]+$")",
                   R"(type = "string")"}));
  EXPECT_EQ(linesOf(properties.member(L"rohi")),
            (Lines{
                R"(description = "Starting a rebuild on a disk that is put in place of a failed one.")",
                R"(properties.enabled.description = "Whether the function is on.")",
                R"(properties.enabled.type = "boolean")",
                R"(properties.supported.description = "Whether the controller has the function.")",
                R"(properties.supported.type = "boolean")",
                R"(required[0] = "supported")",
                R"(required[1] = "enabled")",
                R"(type = "object")",
            }));
  EXPECT_EQ(linesOf(properties.member(L"supportedFunctions").member(L"required")).size(), 10U);
}

TEST(PublishedFunctions, NeverShowTheFlagWithoutAKey) {
  const auto shown = [](bool flag) {
    return linesOf(complete<Controller::Functions>().function420(flag).build().toServiceObject());
  };
  EXPECT_EQ(shown(true), shown(false));
  EXPECT_EQ(shown(true).size(), 10U);
}

/// One flag on at a time, so that no two keys can be mixed up.
TEST(PublishedFunctions, ShowEachFlagUnderItsOwnKey) {
  using Builder = Controller::Functions::Builder;
  const std::vector<std::pair<std::wstring, Builder& (Builder::*)(bool)>> flags = {
      {L"portLocate", &Builder::portLocate},
      {L"markAsNormal", &Builder::markAsNormal},
      {L"volumeDelete", &Builder::volumeDelete},
      {L"arrayCreate", &Builder::arrayCreate},
      {L"volumeModify", &Builder::volumeModify},
      {L"volumeRename", &Builder::volumeRename},
      {L"addDisksToArray", &Builder::addDisksToArray},
      {L"volumeSetCachePolicy", &Builder::volumeSetCachePolicy},
      {L"volumeCancelVerify", &Builder::volumeCancelVerify},
      {L"markAsSpare", &Builder::markAsSpare}};
  for (const auto& on : flags) {
    Builder builder;
    builder.function420(true);
    for (const auto& flag : flags) (builder.*flag.second)(flag.first == on.first);
    const auto form = builder.build().toServiceObject();
    for (const auto& member : form.asObject()) {
      EXPECT_EQ(member.second->toBool(), member.first == on.first) << member.first.c_str();
    }
  }
}

TEST(Controller, KeepsItsAddressToItself) {
  const Controller controller = complete<Controller>().build();
  EXPECT_EQ(controller.address(), L"0-0-23-0");
  EXPECT_FALSE(controller.toServiceObject().hasKey(L"address"));
}

}  // namespace
