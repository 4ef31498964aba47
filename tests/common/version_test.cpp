#include "version.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/lines_of.h"
#include "support/model_samples.h"

namespace {

TEST(PublishedVersion, HasEveryKeyAndNoOther) {
  EXPECT_EQ(linesOf(complete<Version>().build().toServiceObject()), (std::vector<std::string>{
                                                                        "passThroughSupport = false",
                                                                        "pluginVersion = \"5.4.0.1465\"",
                                                                        "productVersion = \"17.5.0\"",
                                                                        "vexInterfaceVersion = \"2.3\"",
                                                                        "vexVersion = \"17.5.1\"",
                                                                        "volSetSizeSupport = true",
                                                                    }));
}

}  // namespace
