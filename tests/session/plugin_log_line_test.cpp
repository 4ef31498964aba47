#include "plugin_log_line.h"

#include <gtest/gtest.h>

namespace {

TEST(PluginLogLine, PutsTheNameOfThePluginAheadOfTheText) {
  EXPECT_EQ(pluginLogLine(L"No such disk"), L"Ordan (R) Mirn Plug-In: No such disk");
  EXPECT_EQ(pluginLogLine(L""), L"Ordan (R) Mirn Plug-In: ");
}

TEST(PluginLogLine, WidensText) {
  EXPECT_EQ(pluginLogLine(std::string("L\303\266we")), L"Ordan (R) Mirn Plug-In: L\u00f6we");
}

}  // namespace
