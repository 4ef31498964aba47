#include "host/service/test_host.h"

#include <sys/stat.h>

#include <boost/json/parse.hpp>
#include <cstdlib>
#include <sstream>

namespace host {

const std::string TestHost::kModule = MIRN_TEST_PLUGIN;
const std::string TestHost::kNotAPlugin = MIRN_TEST_NOT_A_PLUGIN;

TestHost::TestHost() {
  std::string pattern = testing::TempDir() + "/mirn-host.XXXXXX";
  m_folder = mkdtemp(&pattern[0]);
}

TestHost::~TestHost() {
  m_host.reset();
  std::filesystem::remove_all(m_folder);
}

void TestHost::TearDown() {
  if (!m_host || m_host->hasExited()) return;
  EXPECT_EQ(m_host->stop(), 0) << m_host->errors();
}

void TestHost::launch(const std::string& module, const std::vector<std::string>& arguments,
                      Environment environment) {
  std::vector<std::string> words{"--module", module, "--port", "0", "--token-file", file("token")};
  words.insert(words.end(), arguments.begin(), arguments.end());
  environment.emplace("TEST_PLUGIN_TRACE", file("trace"));
  m_host = std::make_unique<HostProcess>(words, environment);
}

void TestHost::serve(const std::vector<std::string>& arguments, Environment environment) {
  launch(kModule, arguments, std::move(environment));
  ASSERT_TRUE(m_host->awaitServing()) << m_host->errors();
}

int TestHost::exitStatus(const std::string& module, const std::vector<std::string>& arguments,
                         Environment environment) {
  launch(module, arguments, std::move(environment));
  return m_host->awaitExit();
}

TestHost::Response TestHost::send(const std::string& method, const std::string& target,
                                  const std::string& body) {
  return connect().exchange(HttpConnection::make(method, target, host().token(), body));
}

std::unique_ptr<std::ofstream> TestHost::block(HttpConnection& client) {
  const std::string fifo = file("fifo");
  EXPECT_EQ(mkfifo(fifo.c_str(), S_IRUSR | S_IWUSR), 0);
  client.send(HttpConnection::make("GET", "/api/v7/test/await-fifo?path=" + fifo, host().token()));
  return std::make_unique<std::ofstream>(fifo);  // opens as soon as the plug-in has opened its end
}

std::string TestHost::readFile(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  return text.str();
}

boost::json::value bodyOf(const HttpConnection::Response& response) {
  return boost::json::parse(response.body());
}

std::string detailOf(const HttpConnection::Response& response) {
  return std::string(bodyOf(response).at("detail").as_string());
}

}  // namespace host
