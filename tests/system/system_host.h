#ifndef MIRN_TESTS_SYSTEM_SYSTEM_HOST_H
#define MIRN_TESTS_SYSTEM_SYSTEM_HOST_H

#include <gtest/gtest.h>

#include <boost/json/value.hpp>
#include <memory>
#include <string>
#include <vector>

#include "host/service/host_process.h"
#include "support/http_connection.h"
#include "support/temporary_folder.h"

namespace host {

/// The whole product as a user starts it: host, module and simulated library, with all their files in a
/// folder of its own. Serves the embedded machine unless told another scenario.
class SystemHost : public testing::Test {
 protected:
  struct Reply {
    unsigned status;
    boost::json::value body;  ///< Null when there was none.
    std::string type;         ///< Content type.
  };

  void serve(std::map<std::string, std::string> environment = {},
             const std::vector<std::string>& arguments = {});
  /// Stops the host and expects a clean end.
  void stop();

  /// `target` is relative to the plug-in's interface: "mirn/volumes".
  Reply request(const std::string& method, const std::string& target, const std::string& body = "");
  Reply get(const std::string& target) { return request("GET", target); }
  Reply put(const std::string& target, const std::string& body = "") { return request("PUT", target, body); }

  /// The list under `target`, expected to be there.
  boost::json::array list(const std::string& target);
  /// The element of a list whose `key` reads `value`.
  boost::json::object find(const std::string& target, const std::string& key, const std::string& value);

  TemporaryFolder m_folder;
  std::unique_ptr<HostProcess> m_host;
};

/// The texts under `key` of a list's elements, in order.
std::vector<std::string> textsUnder(const boost::json::array& list, const std::string& key);

}  // namespace host

#endif
