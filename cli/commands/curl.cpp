#include "commands/curl.h"

#include <boost/algorithm/string/replace.hpp>

namespace mirnctl {

namespace {

std::string quoted(const std::string& text) {
  return "'" + boost::algorithm::replace_all_copy(text, "'", "'\\''") + "'";
}

}  // namespace

std::string curlOf(const Request& request, const Destination& destination) {
  std::string command = "curl";
  if (request.method != "GET") command += " -X " + request.method;
  if (!destination.socketPath.empty()) command += " --unix-socket " + quoted(destination.socketPath);
  if (!destination.caFile.empty()) command += " --cacert " + quoted(destination.caFile);
  if (!destination.token.empty()) command += " -H \"Authorization: Bearer $TOKEN\"";
  for (const auto& [name, value] : request.fields) command += " -H " + quoted(name + ": " + value);
  if (!request.body.empty()) {
    command += " -H 'Content-Type: application/json' -d " + quoted(request.body);
  }
  const std::string base = destination.socketPath.empty() ? destination.url() : "http://localhost";
  return command + ' ' + quoted(base + request.target);
}

}  // namespace mirnctl
