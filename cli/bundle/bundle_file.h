#ifndef MIRN_CLI_BUNDLE_BUNDLE_FILE_H
#define MIRN_CLI_BUNDLE_BUNDLE_FILE_H

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mirnctl {

/// A recorded answer. Plain value; the body lies in the bundle.
struct Recorded {
  std::string path;  ///< Of its request.
  std::map<std::string, std::string> parameters;
  unsigned status = 0;
  std::string_view body;
};

/// A bundle of recorded answers, read into memory: 64 MiB packed, 256 MiB unpacked at most.
class BundleFile {
 public:
  /// Raises a `Failure` (usage) for what is no such bundle.
  explicit BundleFile(const std::filesystem::path& file);
  BundleFile(const BundleFile&) = delete;
  BundleFile& operator=(const BundleFile&) = delete;

  const std::vector<Recorded>& answers() const { return m_answers; }
  /// When it was made, as RFC 3339 writes it.
  const std::string& madeAt() const { return m_madeAt; }

 private:
  void readManifest(const std::map<std::string, std::string_view>& files);

  std::string m_archive;
  std::string m_madeAt;
  std::vector<Recorded> m_answers;
};

/// The path of a request's target, and the parameters behind it; both without percent signs.
std::pair<std::string, std::map<std::string, std::string>> partsOfTarget(std::string_view target);

}  // namespace mirnctl

#endif
