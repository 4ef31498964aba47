#include <boost/asio/io_context.hpp>
#include <boost/asio/local/stream_protocol.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http.hpp>
#include <boost/json.hpp>
#include <stdexcept>

#include "commands/command_arguments.h"
#include "commands/sign_in_command.h"
#include "identity/token_file.h"
#include "net/local_socket.h"
#include "options.h"

namespace host {

namespace {

namespace http = boost::beast::http;
namespace json = boost::json;
namespace po = boost::program_options;
using boost::asio::local::stream_protocol;

struct Wanted {
  std::string socket;
  std::string tokenFile;
  std::string configurationFile;
  std::string role = "administer";
  std::string apiVersion = "v1";
  bool help = false;
};

po::options_description describe(Wanted& wanted) {
  po::options_description options("Options");
  options.add_options()  //
      ("unix-socket", po::value(&wanted.socket)->value_name("FILE"),
       "of the host; otherwise the usual one")  //
      ("token-file", po::value(&wanted.tokenFile)->value_name("FILE"),
       "beside which the usual socket may stand")  //
      ("config", po::value(&wanted.configurationFile)->value_name("FILE"),
       "the host's configuration, which may name these two")  //
      ("role", po::value(&wanted.role)->value_name("ROLE")->default_value(wanted.role),
       "observe, operate or administer, up to one's own")  //
      ("api-version", po::value(&wanted.apiVersion)->value_name("WORD")->default_value(wanted.apiVersion),
       "of the plug-in")  //
      ("help", po::bool_switch(&wanted.help), "show this and exit");
  return options;
}

const std::string& firstSaid(const std::string& said, const std::string& otherwise) {
  return said.empty() ? otherwise : said;
}

std::string socketOf(const Wanted& wanted) {
  const Options configured = configuredOptions(wanted.configurationFile);
  const std::string& named = firstSaid(wanted.socket, configured.unixSocket);
  if (!named.empty()) return named;
  if (!configured.hasUnixSocket) {
    throw UsageError(wanted.configurationFile + " turns the Unix socket off, over which codes are made");
  }
  return defaultSocketPath(firstSaid(firstSaid(wanted.tokenFile, configured.tokenFile), defaultTokenFile()));
}

http::response<http::string_body> ask(const std::string& path,
                                      const http::request<http::string_body>& request) {
  boost::asio::io_context io;
  stream_protocol::socket socket(io);
  socket.connect(stream_protocol::endpoint(path));
  http::write(socket, request);
  boost::beast::flat_buffer buffer;
  http::response<http::string_body> response;
  http::read(socket, buffer, response);
  return response;
}

std::string addressFrom(const std::string& path, const Wanted& wanted) {
  http::request<http::string_body> request(http::verb::post, "/api/" + wanted.apiVersion + "/session/codes",
                                           11);
  request.set(http::field::host, "localhost");
  request.set(http::field::content_type, "application/json");
  request.body() = json::serialize(json::object{{"role", wanted.role}});
  request.prepare_payload();
  const auto response = ask(path, request);
  if (response.result() == http::status::created) {
    return std::string(json::parse(response.body()).at("url").as_string());
  }
  throw std::runtime_error("the host refuses: " + std::to_string(response.result_int()) + ' ' +
                           response.body());
}

}  // namespace

void runSignInCommand(const std::vector<std::string>& arguments, std::ostream& out) {
  Wanted wanted;
  readArguments(arguments, describe(wanted));
  if (wanted.help) {
    out << "Usage: mirn-host sign-in [options]\n"
           "Prints an address that signs in whoever opens it, once and within ten minutes.\n\n"
        << describe(wanted);
    return;
  }
  const std::string path = socketOf(wanted);
  try {
    out << addressFrom(path, wanted) << '\n';
  } catch (const boost::system::system_error& error) {
    throw std::runtime_error("no host answers at \"" + path + "\": " + error.code().message());
  }
}

}  // namespace host
