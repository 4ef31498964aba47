#ifndef MIRN_CLI_WIRE_MESSAGE_H
#define MIRN_CLI_WIRE_MESSAGE_H

#include <map>
#include <string>

namespace mirnctl {

/// What a service is asked. Plain value.
struct Request {
  std::string method = "GET";
  std::string target;  ///< From the slash on, percent-encoded.
  std::map<std::string, std::string> fields{};
  std::string body{};  ///< JSON; empty: none.
};

/// What it answers. Plain value.
struct Reply {
  unsigned status = 0;
  std::map<std::string, std::string> fields{};  ///< Names in lower case.
  std::string body{};
};

}  // namespace mirnctl

#endif
