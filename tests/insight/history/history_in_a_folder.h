#ifndef MIRN_TESTS_INSIGHT_HISTORY_HISTORY_IN_A_FOLDER_H
#define MIRN_TESTS_INSIGHT_HISTORY_HISTORY_IN_A_FOLDER_H

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

#include "history/history.h"
#include "insight/history/sample_entries.h"
#include "insight/history/told_entries.h"
#include "support/temporary_folder.h"

namespace insight {

/// A folder for the file of a history, and what that history has told.
class HistoryInAFolder : public testing::Test {
 protected:
  std::filesystem::path path() const { return (m_folder / "history.db").native(); }

  History::Settings settings() {
    History::Settings settings;
    settings.path = path();
    settings.betweenTries = std::chrono::milliseconds(10);
    settings.nowMs = [] { return kSampleStart; };
    settings.listener = m_told.listener();
    return settings;
  }

  TemporaryFolder m_folder;
  ToldEntries m_told;
};

}  // namespace insight

#endif
