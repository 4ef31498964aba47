#ifndef MIRN_PLUGIN_MIRN_PLUGIN_H
#define MIRN_PLUGIN_MIRN_PLUGIN_H

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "base_plugin.h"
#include "listener_interface.h"
#include "mirn_session.h"
#include "plugin_extensions.h"

/// The one plug-in of the module: opens and closes the storage library, owns the session and a listener for
/// each branch of the path tree, and hands every request to the listener of its path key. Tells a host more
/// by the interfaces of plugin_extensions.h.
///
/// Takes no lock: everything but the flag is constant after construction. The destructor does not close the
/// library: `finish` is the host's duty.
class mirn_plugin : public ovra::BasePlugin,
                    public ovra::described_plugin_1,
                    public ovra::watched_plugin_1,
                    public ovra::rehearsed_plugin_1,
                    public ovra::guarded_plugin_1 {
 public:
  /// Makes no library call and starts no thread.
  mirn_plugin();

  /// False when the library or the session refuses; the reason is logged.
  bool initialize() override;
  /// Requests are refused from its first step on, so that none reaches a closing library. Returns when all
  /// who wait for a change have left.
  void finish() override;
  /// Asks the library at each call. Says nothing of requests, which go on being served.
  std::int32_t getStatus() override;
  /// The keys of the listeners, in ascending order. Works before `initialize`.
  std::vector<std::wstring> getHandledPaths() override;
  /// `path` is one key, exactly; an unknown one raises `std::out_of_range`. Before `initialize` and after
  /// `finish` every request is refused with "Mirn_OFFLINE".
  ovra::data_transfer::ServiceObject handleRequest(std::wstring path, std::int32_t method,
                                                   std::vector<std::wstring> segments,
                                                   std::map<std::wstring, std::wstring> parameters,
                                                   ovra::data_transfer::ServiceObject body) override;

  // described_plugin_1: made once; see plugin_description.h.
  ovra::data_transfer::ServiceObject describe() override;

  // watched_plugin_1: works before `initialize` and after `finish`, too; then nobody waits.
  ovra::PluginPosition position() override;
  bool waitForChange(const ovra::PluginPosition& known, std::int64_t milliseconds) override;
  ovra::data_transfer::ServiceObject eventsAfter(std::uint64_t sequence, std::uint64_t limit) override;
  ovra::data_transfer::ServiceObject picture() override;

  // rehearsed_plugin_1: refused before `initialize` and after `finish`, as requests are.
  ovra::data_transfer::ServiceObject rehearse(std::wstring path, std::int32_t method,
                                              std::vector<std::wstring> segments,
                                              std::map<std::wstring, std::wstring> parameters,
                                              ovra::data_transfer::ServiceObject body) override;
  ovra::data_transfer::ServiceObject rehearseEach(
      std::wstring path, std::int32_t method, std::vector<std::wstring> segments,
      std::map<std::wstring, std::wstring> parameters, ovra::data_transfer::ServiceObject body,
      std::wstring argument, std::vector<ovra::data_transfer::ServiceObject> values) override;

  // guarded_plugin_1
  ovra::data_transfer::ServiceObject handleRequestAt(const std::wstring& epoch, std::uint64_t structure,
                                                     std::wstring path, std::int32_t method,
                                                     std::vector<std::wstring> segments,
                                                     std::map<std::wstring, std::wstring> parameters,
                                                     ovra::data_transfer::ServiceObject body) override;

 private:
  void addListeners();
  /// Raises "Mirn_OFFLINE" where no request may be served.
  void requireWorking() const;

  /// 1: the library is open and the session started. Read by every request, written by
  /// `initialize` and `finish`.
  std::atomic<std::int32_t> m_initialized;
  std::map<std::wstring, std::unique_ptr<IListener>> m_listeners;
  MirnSession m_session;  ///< Goes before the listeners, which do not use it in their destructors.
};

#endif
