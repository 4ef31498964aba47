#include "module/request.h"

#include <typeinfo>

#include "http_method.h"
#include "mirn_exception.h"
#include "request_error.h"
#include "service_exceptions.h"
#include "support/text_form.h"
#include "vex_exception.h"

using ovra::data_transfer::ServiceObject;

namespace {

std::string classOf(const std::exception& error) {
  if (typeid(error) == typeid(MirnException)) return "MirnException";
  if (typeid(error) == typeid(ListenerException)) return "ListenerException";
  if (typeid(error) == typeid(VexException)) return "VexException";
  if (typeid(error) == typeid(ovra::request_validator::RequestError)) return "RequestError";
  return typeid(error).name();
}

}  // namespace

Request get(const std::wstring& path, const Segments& segments) {
  return {path, HttpMethod::kGet, segments, {}};
}

Request post(const std::wstring& path, const Segments& segments, const ServiceObject& body) {
  return {path, HttpMethod::kPost, segments, body};
}

Request put(const std::wstring& path, const Segments& segments, const ServiceObject& body) {
  return {path, HttpMethod::kPut, segments, body};
}

Request remove(const std::wstring& path, const Segments& segments) {
  return {path, HttpMethod::kDelete, segments, {}};
}

ServiceObject serve(ovra::service_plugin_interface& plugin, const Request& request) {
  return plugin.handleRequest(request.path, request.method, request.segments, request.parameters,
                              request.body);
}

std::string failureText(const std::string& exceptionClass, const std::string& errorId,
                        const std::string& text) {
  return exceptionClass + ' ' + errorId + ": " + text;
}

std::string outcomeOf(const std::function<ServiceObject()>& call) {
  try {
    return textForm(call());
  } catch (const std::exception& error) {
    const auto* const withId = dynamic_cast<const ovra::common::IErrorIdException*>(&error);
    return failureText(classOf(error), withId ? withId->getErrorId() : "-", error.what());
  }
}
