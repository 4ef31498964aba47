#ifndef MIRN_TESTS_SUPPORT_EXCHANGE_RECORD_H
#define MIRN_TESTS_SUPPORT_EXCHANGE_RECORD_H

#include <boost/beast/http/message.hpp>
#include <boost/beast/http/string_body.hpp>
#include <cstdint>
#include <string>

/// What tests ask of running hosts and are answered, a line of JSON each, in a file of this process in the
/// folder that MIRN_EXCHANGES names; nothing without that variable. tests/openapi/judge_exchanges.py reads
/// them. Safe from any thread.
namespace exchange_record {

bool isWanted();

/// From now on `port` is a host that serves `module`.
void addHost(std::uint16_t port, const std::string& module);

/// What that host is asked is left to chance: no exchange with it counts as one that the tests bring about.
void addRandomClient(std::uint16_t port);

void add(std::uint16_t port, const boost::beast::http::request<boost::beast::http::string_body>& request,
         const boost::beast::http::response<boost::beast::http::string_body>& response);

}  // namespace exchange_record

#endif
