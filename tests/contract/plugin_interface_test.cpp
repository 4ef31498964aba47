#include "plugin_interface.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

#include "http_method.h"
#include "support/virtual_slot.h"

namespace {

using ovra::plugin_interface;
using ovra::service_plugin_interface;

static_assert(std::is_trivially_copyable_v<PluginVersion>);
static_assert(offsetof(PluginVersion, major) == 0 && offsetof(PluginVersion, minor) == 4);
static_assert(offsetof(PluginVersion, patch) == 8 && offsetof(PluginVersion, build) == 12);
static_assert(sizeof(PluginDescription) == 3 * sizeof(std::wstring) + sizeof(PluginVersion));
static_assert(std::is_base_of_v<plugin_interface, service_plugin_interface>);
static_assert(std::has_virtual_destructor_v<plugin_interface>);
static_assert(!std::has_virtual_destructor_v<PluginRegistrar>);
static_assert(HttpMethod::kGet == 1 && HttpMethod::kPost == 2 && HttpMethod::kPut == 3 &&
              HttpMethod::kDelete == 4);

TEST(PluginDescriptionTest, StartsEmpty) {
  const PluginDescription description;
  EXPECT_TRUE(description.name.empty() && description.code.empty() && description.apiVersion.empty());
  EXPECT_EQ(description.version.major + description.version.minor, 0u);
  EXPECT_EQ(description.version.patch + description.version.build, 0u);
}

TEST(PluginDescriptionTest, HoldsItsFieldsInOrder) {
  const PluginDescription description;
  EXPECT_LT(static_cast<const void*>(&description.name), static_cast<const void*>(&description.code));
  EXPECT_LT(static_cast<const void*>(&description.code), static_cast<const void*>(&description.apiVersion));
  EXPECT_LT(static_cast<const void*>(&description.apiVersion),
            static_cast<const void*>(&description.version));
}

TEST(PluginNames, ArePlain) {
  EXPECT_STREQ(kDiscoverPluginName, "discover_plugin");
  EXPECT_STREQ(kRegisterPluginName, "register_plugin");
}

// A host and a module of different builds meet by these places alone.

TEST(PluginInterface, HasItsVirtualOperationsInOrderBehindTheDestructor) {
  EXPECT_EQ(virtualSlot(&plugin_interface::getShortName), 2u);
  EXPECT_EQ(virtualSlot(&plugin_interface::getName), 3u);
  EXPECT_EQ(virtualSlot(&plugin_interface::getVersion), 4u);
  EXPECT_EQ(virtualSlot(&plugin_interface::getCode), 5u);
  EXPECT_EQ(virtualSlot(&plugin_interface::getApiVersion), 6u);
  EXPECT_EQ(virtualSlot(&plugin_interface::initialize), 7u);
  EXPECT_EQ(virtualSlot(&plugin_interface::finish), 8u);
  EXPECT_EQ(virtualSlot(&plugin_interface::getStatus), 9u);
  EXPECT_EQ(virtualSlot(&service_plugin_interface::getHandledPaths), 10u);
  EXPECT_EQ(virtualSlot(&service_plugin_interface::handleRequest), 11u);
}

TEST(PluginRegistrarTest, AddPluginIsItsFirstVirtualOperation) {
  EXPECT_EQ(virtualSlot(&PluginRegistrar::addPlugin), 0u);
}

}  // namespace
