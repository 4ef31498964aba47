#ifndef MIRN_TESTS_HOST_SERVICE_TEST_HOST_H
#define MIRN_TESTS_HOST_SERVICE_TEST_HOST_H

#include <gtest/gtest.h>

#include <boost/json/value.hpp>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "host/service/host_process.h"
#include "support/http_connection.h"

namespace host {

/// A host that serves the test plug-in on a free port, with its files in a folder of its own.
class TestHost : public testing::Test {
 protected:
  using Response = HttpConnection::Response;
  using Environment = std::map<std::string, std::string>;

  TestHost();
  ~TestHost() override;

  /// Whatever a test did to it, a running host stops in good order.
  void TearDown() override;

  /// Starts the host and waits until it serves.
  void serve(const std::vector<std::string>& arguments = {}, Environment environment = {});

  /// Starts the host on `module` and waits for its end.
  int exitStatus(const std::string& module, const std::vector<std::string>& arguments = {},
                 Environment environment = {});

  HostProcess& host() { return *m_host; }
  HttpConnection connect() { return HttpConnection(m_host->port()); }

  /// A request with the token, on a connection of its own.
  Response send(const std::string& method, const std::string& target, const std::string& body = "");
  Response get(const std::string& target) { return send("GET", target); }

  /// A request on `client` that stays inside the plug-in until the result goes.
  std::unique_ptr<std::ofstream> block(HttpConnection& client);

  std::string file(const std::string& name) const { return (m_folder / name).string(); }
  static std::string readFile(const std::string& path);

  /// The lines that the plug-in left of its life.
  std::string trace() const { return readFile(file("trace")); }

  static const std::string kModule;
  static const std::string kNotAPlugin;

 private:
  void launch(const std::string& module, const std::vector<std::string>& arguments, Environment environment);

  std::filesystem::path m_folder;
  std::unique_ptr<HostProcess> m_host;
};

boost::json::value bodyOf(const HttpConnection::Response& response);

/// The `detail` of a problem document.
std::string detailOf(const HttpConnection::Response& response);

}  // namespace host

#endif
