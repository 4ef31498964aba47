#ifndef MIRN_TESTS_MODULE_REQUEST_H
#define MIRN_TESTS_MODULE_REQUEST_H

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "plugin_interface.h"
#include "ServiceObject.h"

/// One request, as a host hands it over.
struct Request {
  std::wstring path;
  std::int32_t method;
  std::vector<std::wstring> segments;
  ovra::data_transfer::ServiceObject body;
  std::map<std::wstring, std::wstring> parameters = {};
};

using Segments = std::vector<std::wstring>;

Request get(const std::wstring& path, const Segments& segments = {});
Request post(const std::wstring& path, const Segments& segments,
             const ovra::data_transfer::ServiceObject& body = {});
Request put(const std::wstring& path, const Segments& segments,
            const ovra::data_transfer::ServiceObject& body = {});
Request remove(const std::wstring& path, const Segments& segments);

ovra::data_transfer::ServiceObject serve(ovra::service_plugin_interface& plugin, const Request& request);

/// What a call of the plug-in comes to, as one line: the value it answers, or the failure in the
/// words of `failureText`.
std::string outcomeOf(const std::function<ovra::data_transfer::ServiceObject()>& call);

/// Such as `MirnException INVALID_PARAMETER: Duplicated volume name`. `errorId` is "-" where there is none.
std::string failureText(const std::string& exceptionClass, const std::string& errorId,
                        const std::string& text);

#endif
