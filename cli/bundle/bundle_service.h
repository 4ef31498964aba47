#ifndef MIRN_CLI_BUNDLE_BUNDLE_SERVICE_H
#define MIRN_CLI_BUNDLE_BUNDLE_SERVICE_H

#include <filesystem>

#include "bundle/bundle_file.h"
#include "wire/client.h"

namespace mirnctl {

/// Answers with what a bundle has recorded. What it has not, and every change, is refused (usage). Lists are
/// picked out of by the members of their records, and cut to pages.
class BundleService : public IService {
 public:
  explicit BundleService(const std::filesystem::path& file) : m_file(file) {}

  Reply ask(const Request& request) override;
  Reply follow(const Request& request, const std::function<bool(std::string_view)>& take) override;

  const std::string& madeAt() const { return m_file.madeAt(); }

 private:
  BundleFile m_file;
};

/// "bundle of 2026-11-22 19:54:03Z, 2 h 5 min old", at that moment in seconds since 1970.
std::string ageText(const std::string& madeAt, std::int64_t now);

}  // namespace mirnctl

#endif
