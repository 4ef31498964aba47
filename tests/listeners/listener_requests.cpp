#include "listeners/listener_requests.h"

#include <sstream>
#include <typeinfo>

#include "listeners/seen_refusals.h"
#include "mirn_exception.h"
#include "request_error.h"
#include "service_exceptions.h"
#include "support/lines_of.h"

namespace {

std::vector<std::wstring> segmentsOf(const std::string& path) {
  std::vector<std::wstring> segments;
  std::istringstream stream(path);
  for (std::string segment; std::getline(stream, segment, '/');) segments.push_back(utf8ToWide(segment));
  return segments;
}

template <class Error>
std::string told(const char* name, const Error& error, const IListener& listener, const Request& request) {
  noteRefusal(listener, request, error);
  EXPECT_STREQ(error.getMessage(), error.what());
  return std::string(name) + " " + error.getErrorId() + ": " + error.what();
}

}  // namespace

std::string describe(const ServiceObject& value) {
  std::string text;
  for (const std::string& line : linesOf(value)) text += (text.empty() ? "" : ", ") + line;
  return text;
}

std::string outcomeOf(IListener& listener, const Request& request) {
  try {
    return describe(
        listener.handleRequest(request.method, segmentsOf(request.path), request.parameters, request.body));
  } catch (const ListenerException& error) {
    return told("ListenerException", error, listener, request);
  } catch (const ovra::request_validator::RequestError& error) {
    return told("RequestError", error, listener, request);
  } catch (const MirnException& error) {
    return told("MirnException", error, listener, request);
  } catch (const ovra::common::HttpClientErrorException& error) {
    return "HttpClientErrorException " + std::to_string(error.status) + ": " + error.what();
  } catch (const std::exception& error) {
    return std::string("another exception: ") + error.what();
  }
}

std::string refused(const std::string& errorId, const std::string& words) {
  return "ListenerException " + errorId + ": " + words;
}

std::string invalid(const std::string& report) { return "RequestError INVALID_PARAMETER: " + report; }

std::string failed(const std::string& errorId, const std::string& words) {
  return "MirnException " + errorId + ": " + words;
}

std::string notFound() { return "HttpClientErrorException 404: Request is not supported"; }
