#ifndef MIRN_TESTS_SIMULATOR_STATE_STATE_FIXTURE_H
#define MIRN_TESTS_SIMULATOR_STATE_STATE_FIXTURE_H

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "core/library.h"
#include "rules/rules.h"
#include "scenario/scenario.h"
#include "simulator/workbench.h"
#include "support/environment.h"
#include "support/temporary_folder.h"

namespace simulator {

/// The library on files of a folder of its own; a new one is a start, the old one's end without an end is
/// a kill.
class StateFixture : public testing::Test {
 protected:
  StateFixture() {
    writeText(path("scenario.json"), kWorkbench);
    setVariable("VEXL2_SCENARIO", path("scenario.json"));
    setVariable("VEXL2_STATE", path("state.json"));
    m_options.lockWait.sleep = [](std::chrono::milliseconds) {};
  }
  ~StateFixture() override {
    unsetVariable("VEXL2_SCENARIO");
    unsetVariable("VEXL2_STATE");
  }

  std::string path(const std::string& name) const { return (m_folder / name).string(); }
  std::string read(const std::string& name) const { return readText(path(name)); }
  bool isThere(const std::string& name) const { return boost::filesystem::exists(path(name)); }

  Status start() {
    kill();
    m_library = std::make_unique<Library>(Clock([] { return Clock::Instant(); }), m_options);
    return m_library->initialize("VexInitialize");
  }

  /// As if the process died: nothing is written any more.
  void kill() { m_library.reset(); }

  void stop() {
    EXPECT_EQ(m_library->finalize("VexFinalize"), 0U);
    kill();
  }

  Library& library() { return *m_library; }

  Status rename(const std::string& name) {
    return m_library->change("VexVolumeRename", [&](Machine& machine) {
      for (const auto& entry : std::as_const(machine).volumes) {
        if (entry.second.id == "volume five") renameVolume(machine, entry.first, name);
      }
    });
  }

  /// What a look at the library shows, as the text of a scenario.
  std::string machine() {
    std::string text;
    EXPECT_EQ(m_library->inspect([&](const Machine& machine) { text = writeScenario(machine); }), 0U);
    return text;
  }

  std::string name() {
    std::string name;
    EXPECT_EQ(m_library->inspect([&](const Machine& machine) {
      for (const auto& entry : machine.volumes) {
        if (entry.second.id == "volume five") name = entry.second.name;
      }
    }),
              0U);
    return name;
  }

  StateOptions m_options;

 private:
  const TemporaryFolder m_folder;
  std::unique_ptr<Library> m_library;
};

/// What goes to standard error meanwhile.
template <class Body>
std::string said(const Body& body) {
  testing::internal::CaptureStderr();
  body();
  return testing::internal::GetCapturedStderr();
}

}  // namespace simulator

#endif
