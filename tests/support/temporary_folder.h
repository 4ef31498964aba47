#ifndef MIRN_TESTS_SUPPORT_TEMPORARY_FOLDER_H
#define MIRN_TESTS_SUPPORT_TEMPORARY_FOLDER_H

#include <boost/filesystem.hpp>
#include <fstream>
#include <iterator>
#include <string>

/// A fresh folder that goes away with everything in it.
class TemporaryFolder {
 public:
  TemporaryFolder()
      : m_path(boost::filesystem::temp_directory_path() /
               boost::filesystem::unique_path("mirn-%%%%%%%%%%%%")) {
    boost::filesystem::create_directory(m_path);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    boost::system::error_code ignored;
    boost::filesystem::remove_all(m_path, ignored);
  }

  const boost::filesystem::path& path() const { return m_path; }
  boost::filesystem::path operator/(const std::string& name) const { return m_path / name; }

  std::size_t entries() const {
    using Iterator = boost::filesystem::directory_iterator;
    return static_cast<std::size_t>(std::distance(Iterator(m_path), Iterator()));
  }

 private:
  boost::filesystem::path m_path;
};

inline void writeText(const boost::filesystem::path& path, const std::string& text) {
  std::ofstream(path.c_str(), std::ios::binary) << text;
}

inline std::string readText(const boost::filesystem::path& path) {
  std::ifstream stream(path.c_str(), std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

#endif
