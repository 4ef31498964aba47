#ifndef MIRN_HOST_HTTP_HOST_NAMES_H
#define MIRN_HOST_HTTP_HOST_NAMES_H

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// The names under which this host may be asked. A browser that a foreign page sends here by a name of its
/// own making asks under that name, and is turned away. Constant after construction.
class HostNames {
 public:
  /// The names of the loopback, and `names`: of the server, or addresses.
  explicit HostNames(const std::vector<std::string>& names = {});

  /// The host of `authority` ("name", "name:port", "[address]:port") in the form in which it is compared.
  /// Raises a `Refusal` 400 when it is anything else.
  static std::string hostOf(std::string_view authority);

  /// `host` as `hostOf` gives it.
  bool has(const std::string& host) const { return m_names.count(host) != 0; }

 private:
  std::set<std::string> m_names;
};

}  // namespace host

#endif
