#ifndef MIRN_TESTS_BASE_ATOMIC_FILE_FIXTURE_H
#define MIRN_TESTS_BASE_ATOMIC_FILE_FIXTURE_H

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "atomic_file.h"
#include "support/temporary_folder.h"

/// A file in a folder of its own.
class AtomicFileFixture : public testing::Test {
 protected:
  std::filesystem::path inFolder(const std::string& name) const {
    return std::filesystem::path(m_folder.path().string()) / name;
  }

  void given(const std::string& text) const { writeText(m_folder / "file", text); }
  std::string content() const { return readText(m_folder / "file"); }
  std::size_t entries() const { return m_folder.entries(); }

  /// What the replacement was refused with; empty when it was not.
  std::string refusal(const std::string& text) const { return refusal(m_path, text); }

  static std::string refusal(const std::filesystem::path& path, const std::string& text) {
    try {
      replaceFile(path, text, Readers::kEveryone);
    } catch (const std::runtime_error& failure) {
      return failure.what();
    }
    return "";
  }

  const TemporaryFolder m_folder;
  const std::filesystem::path m_path = inFolder("file");
};

#endif
