#ifndef MIRN_TESTS_SUPPORT_SETTINGS_FILE_H
#define MIRN_TESTS_SUPPORT_SETTINGS_FILE_H

#include <string>

#include "support/environment.h"
#include "support/temporary_folder.h"

/// While it lives, the machine's settings are in a file of their own. There is none until it is written.
class SettingsFile {
 public:
  SettingsFile() { setVariable("MIRN_REGISTRY", m_path.string()); }
  explicit SettingsFile(const std::string& text) : SettingsFile() { write(text); }
  SettingsFile(const SettingsFile&) = delete;
  SettingsFile& operator=(const SettingsFile&) = delete;
  ~SettingsFile() { unsetVariable("MIRN_REGISTRY"); }

  void write(const std::string& text) { writeText(m_path, text); }
  std::string text() const { return readText(m_path); }
  bool exists() const { return boost::filesystem::exists(m_path); }

  const boost::filesystem::path& path() const { return m_path; }
  const TemporaryFolder& folder() const { return m_folder; }

 private:
  TemporaryFolder m_folder;
  boost::filesystem::path m_path = m_folder / "registry.ini";
};

#endif
