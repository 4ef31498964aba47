#ifndef MIRN_LISTENERS_LISTENER_INTERFACE_H
#define MIRN_LISTENERS_LISTENER_INTERFACE_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "ServiceObject.h"

/// Serves one branch of the plug-in's path tree.
class IListener {
 public:
  virtual ~IListener() = default;

  /// Answers one request; safe from any thread. Every failure is an exception, see service_exceptions.h.
  /// `method` is a code of http_method.h, `segments` the path behind the listener's key; `body` is null when
  /// there is none.
  virtual ovra::data_transfer::ServiceObject handleRequest(std::int32_t method,
                                                           std::vector<std::wstring> segments,
                                                           std::map<std::wstring, std::wstring> parameters,
                                                           ovra::data_transfer::ServiceObject body) = 0;
};

#endif
