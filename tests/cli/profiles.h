#ifndef MIRN_TESTS_CLI_PROFILES_H
#define MIRN_TESTS_CLI_PROFILES_H

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "atomic_file.h"
#include "destination/profile.h"
#include "support/temporary_folder.h"

/// A file of profiles in a folder of its own, and no other surroundings.
class Profiles : public testing::Test {
 protected:
  Profiles() { m_surroundings.configuration = folder() / "config"; }

  std::filesystem::path write(const std::string& name, const std::string& text) {
    const std::filesystem::path file = folder() / name;
    replaceFile(file, text, Readers::kOwner);
    return file;
  }

  std::filesystem::path folder() const { return m_folder.path().string(); }

  std::string urlWith(const mirnctl::Directions& directions) {
    return mirnctl::destinationOf(directions, m_surroundings).url();
  }

  TemporaryFolder m_folder;
  mirnctl::Surroundings m_surroundings;
};

#endif
