#ifndef MIRN_HOST_HTTP_REQUEST_READER_H
#define MIRN_HOST_HTTP_REQUEST_READER_H

#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <string>
#include <utility>

#include "http/header_scan.h"
#include "http/host_names.h"
#include "http/request.h"
#include "service_limits.h"

namespace host {

/// Reads one request from the bytes that come in, strictly: a request that could be understood in two ways is
/// refused. Knows nothing of connections.
///
/// A failure leaves as a `Refusal`; nothing that comes behind it may be taken for a request then.
class RequestReader {
 public:
  /// `names` outlives the reader.
  RequestReader(const Limits& limits, const HostNames& names, const Destination& destination);

  /// Takes the header off `input`, once it is there as a whole: false while it is not.
  bool readHeader(boost::beast::flat_buffer& input);

  /// Behind the header: takes what has come of the body off `input`. False while there is more of it.
  bool readBody(boost::beast::flat_buffer& input);

  /// What the header says, once it is read; empty texts before.
  const Request& request() const { return m_request; }

  /// Hands out what is of no use once it was judged: the fields that tell who asks, and for what form.
  std::string takeAuthorization() { return std::move(m_request.authorization); }
  AnswerWishes takeWishes() { return std::move(m_request.wishes); }

  /// The request is read to its end, so that the next one starts where it ended.
  bool isWhole() const { return m_isWhole; }

  /// Hands out the body.
  std::string takeBody();

 private:
  const Limits m_limits;
  const HostNames& m_names;
  const Destination m_destination;
  HeaderScan m_scan;
  boost::beast::http::request_parser<boost::beast::http::string_body> m_parser;
  Request m_request;
  bool m_isWhole = false;
};

}  // namespace host

#endif
