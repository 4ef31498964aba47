#include "settings_store.h"

#include <fcntl.h>
#include <unistd.h>

#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <charconv>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <sstream>
#include <stdexcept>

#include "atomic_file.h"
#include "links.h"
#include "text.h"

namespace {

namespace fs = std::filesystem;
using boost::property_tree::ptree;

constexpr char kPathVariable[] = "MIRN_REGISTRY";
constexpr char kDefaultPath[] = "/etc/mirn/registry.ini";

/// Numbers are decimal digits alone: no sign, no blank.
boost::optional<std::uint32_t> parseNumber(const std::string& text) {
  std::uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return boost::none;
  return number;
}

/// The child called `name`, whatever dots are in it: a path of the tree would be split at them.
ptree& childNamed(ptree& parent, const std::string& name) {
  const auto found = parent.find(name);
  return found != parent.not_found() ? found->second : parent.push_back({name, ptree()})->second;
}

class IniFile {
 public:
  explicit IniFile(fs::path path) : m_path(std::move(path)) {}

  bool exists() const {
    std::error_code error;
    return fs::exists(m_path, error);
  }

  bool isWritable() const {
    try {
      const fs::path subject = exists() ? m_path : behindLinks(m_path).parent_path();
      return ::faccessat(AT_FDCWD, subject.c_str(), W_OK, AT_EACCESS) == 0;
    } catch (const std::runtime_error&) {
      return false;
    }
  }

  /// None when the file is missing, may not be read or is no INI file.
  boost::optional<ptree> load() const {
    std::error_code error;
    if (!fs::is_regular_file(m_path, error)) return boost::none;
    std::ifstream stream(m_path);
    if (!stream) return boost::none;
    try {
      ptree tree;
      read_ini(stream, tree);
      return tree;
    } catch (const boost::property_tree::ptree_error&) {
      return boost::none;
    }
  }

  bool save(const ptree& tree) const {
    try {
      std::ostringstream content;
      write_ini(content, tree);
      replaceFile(m_path, content.str(), Readers::kEveryone);
      return true;
    } catch (const std::runtime_error&) {  // what the tree raises, too
      return false;
    }
  }

 private:
  fs::path m_path;
};

class IniKey : public ISettingsKey {
 public:
  IniKey(IniFile file, std::string section, SettingsAccess access)
      : m_file(std::move(file)), m_section(std::move(section)), m_access(access) {}

  bool isOpenable() const {
    if (m_access == SettingsAccess::kWrite) return m_file.isWritable();
    const auto tree = m_file.load();
    return tree && tree->find(m_section) != tree->not_found();
  }

  boost::optional<std::uint32_t> read(const std::wstring& name) const override {
    const auto tree = m_file.load();
    if (!tree) return boost::none;
    const auto section = tree->find(m_section);
    if (section == tree->not_found()) return boost::none;
    const auto value = section->second.find(wideToUtf8(name));
    if (value == section->second.not_found()) return boost::none;
    return parseNumber(value->second.data());
  }

  bool write(const std::wstring& name, std::uint32_t value) override {
    if (m_access != SettingsAccess::kWrite) return false;
    static std::mutex oneChange;
    const std::lock_guard<std::mutex> lock(oneChange);
    auto tree = m_file.exists() ? m_file.load() : ptree();
    if (!tree) return false;
    childNamed(childNamed(*tree, m_section), wideToUtf8(name)).data() = std::to_string(value);
    return m_file.save(*tree);
  }

 private:
  IniFile m_file;
  std::string m_section;
  SettingsAccess m_access;
};

class IniStore : public ISettingsStore {
 public:
  explicit IniStore(IniFile file) : m_file(std::move(file)) {}

  std::unique_ptr<ISettingsKey> open(const std::wstring& path, SettingsAccess access) override {
    auto key = std::make_unique<IniKey>(m_file, wideToUtf8(path), access);
    return key->isOpenable() ? std::move(key) : nullptr;
  }

 private:
  IniFile m_file;
};

/// Absolute, so that every name has a folder.
fs::path registryPath() {
  const char* chosen = std::getenv(kPathVariable);
  const fs::path path = chosen && *chosen ? chosen : kDefaultPath;
  std::error_code error;
  const fs::path absolute = fs::absolute(path, error);
  return error ? path : absolute;
}

}  // namespace

std::unique_ptr<ISettingsStore> makeSettingsStore() {
  return std::make_unique<IniStore>(IniFile(registryPath()));
}
