#include "port.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/lines_of.h"
#include "support/model_samples.h"

namespace {

using Lines = std::vector<std::string>;

TEST(PublishedPort, HasEveryKeyAndNoOther) {
  Port port = complete<Port>().build();
  port.setLocalDeviceId(L"11");
  port.setConnectedPortId(L"52");
  EXPECT_EQ(linesOf(port.toServiceObject()), (Lines{
                                                 "address = \"1-2-3-4\"",
                                                 "connectedPortId = \"52\"",
                                                 "id = \"51\"",
                                                 "localDeviceId = \"11\"",
                                                 "localDeviceType = \"CONTROLLER\"",
                                                 "numPhys = 4",
                                             }));
}

TEST(PublishedPort, HasEmptyIdsBeforeItIsLinked) {
  const auto form = complete<Port>().build().toServiceObject();
  EXPECT_EQ(linesOf(form.member(L"localDeviceId")), Lines{"\"\""});
  EXPECT_EQ(linesOf(form.member(L"connectedPortId")), Lines{"\"\""});
}

TEST(Port, KeepsItsHandlesToItself) {
  const Port port = complete<Port>().build();
  EXPECT_EQ(port.handle(), 0x51U);
  EXPECT_EQ(port.localDeviceHandle(), 0x11U);
  EXPECT_EQ(port.connectedPortHandle(), 0x52U);
}

}  // namespace
