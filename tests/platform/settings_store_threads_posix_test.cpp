#include <gtest/gtest.h>

#include <boost/optional/optional_io.hpp>

#include <thread>
#include <vector>

#include "settings_store.h"
#include "support/environment.h"
#include "support/temporary_folder.h"

namespace {

TEST(SettingsStoreThreads, WriteValuesOfTheirOwnWithoutLosingAny) {
  const TemporaryFolder folder;
  setVariable("MIRN_REGISTRY", (folder / "registry.ini").string());
  const auto store = makeSettingsStore();

  std::vector<std::thread> writers;
  for (std::uint32_t writer = 0; writer < 4; ++writer) {
    writers.emplace_back([&store, writer] {
      for (std::uint32_t value = 0; value <= 5; ++value) {
        EXPECT_TRUE(store->open(L"key", SettingsAccess::kWrite)->write(std::to_wstring(writer), value));
      }
    });
  }
  for (auto& writer : writers) writer.join();

  const auto key = store->open(L"key", SettingsAccess::kRead);
  ASSERT_TRUE(key);
  for (std::uint32_t writer = 0; writer < 4; ++writer) EXPECT_EQ(key->read(std::to_wstring(writer)), 5u);
}

}  // namespace
