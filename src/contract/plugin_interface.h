#ifndef MIRN_CONTRACT_PLUGIN_INTERFACE_H
#define MIRN_CONTRACT_PLUGIN_INTERFACE_H

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "ServiceObject.h"

/// What a host and a plug-in module know of each other.
///
/// The host calls, in this order: `discover_plugin`; `register_plugin`; `initialize`; any number of requests
/// and getters, from any thread; `finish`; release of the shared pointer; and only then unloads the module.
/// Both sides are built against the same standard library, since nothing is marshalled: strings, containers
/// and exceptions cross as they are.

/// Four numbers, copied byte for byte.
struct PluginVersion {
  std::uint32_t major;
  std::uint32_t minor;
  std::uint32_t patch;
  std::uint32_t build;
};
static_assert(sizeof(PluginVersion) == 16, "the host copies 16 bytes");

/// Made by the host, assigned by `discover_plugin`.
struct PluginDescription {
  std::wstring name;        ///< Long name, for people.
  std::wstring code;        ///< First part of every path key.
  std::wstring apiVersion;  ///< Interface version word, such as "v1".
  PluginVersion version{};
};

namespace ovra {

class plugin_interface {
 public:
  virtual ~plugin_interface() = default;

  virtual const std::wstring& getShortName() const = 0;
  virtual const std::wstring& getName() const = 0;
  virtual const PluginVersion& getVersion() const = 0;
  virtual const std::wstring& getCode() const = 0;
  virtual const std::wstring& getApiVersion() const = 0;

  /// Makes the plug-in ready for requests. False, or an exception: it is not ready.
  virtual bool initialize() = 0;
  /// The host's duty before it releases the plug-in. May take some seconds.
  virtual void finish() = 0;
  /// 0 working, 1 not working; a live probe.
  virtual std::int32_t getStatus() = 0;
};

class service_plugin_interface : public plugin_interface {
 public:
  /// The path keys that `handleRequest` knows, such as "mirn" or "mirn/volumes".
  virtual std::vector<std::wstring> getHandledPaths() = 0;

  /// Serves one request. Every failure is a `std::exception`, see service_exceptions.h.
  ///
  /// - `path` is one of the handled paths, exactly; `method` is a code of http_method.h.
  /// - `segments` are the path's segments behind the key, decoded, in order.
  /// - `parameters` are the query parameters, decoded.
  /// - `body` is the request's body; null when there is none.
  virtual data_transfer::ServiceObject handleRequest(std::wstring path, std::int32_t method,
                                                     std::vector<std::wstring> segments,
                                                     std::map<std::wstring, std::wstring> parameters,
                                                     data_transfer::ServiceObject body) = 0;
};

}  // namespace ovra

/// Implemented by the host. `addPlugin` is its first virtual operation: a module calls no other.
class PluginRegistrar {
 public:
  /// Takes the plug-in over. The result is what `register_plugin` returns.
  virtual bool addPlugin(std::shared_ptr<ovra::plugin_interface> plugin) = 0;

 protected:
  ~PluginRegistrar() = default;
};

/// The two exports of a module, by these plain names. The types are for `dlsym` or `GetProcAddress`.
using DiscoverPluginFunction = void (*)(PluginDescription& out);
using RegisterPluginFunction = bool (*)(PluginRegistrar& registrar);
constexpr char kDiscoverPluginName[] = "discover_plugin";
constexpr char kRegisterPluginName[] = "register_plugin";

#endif
