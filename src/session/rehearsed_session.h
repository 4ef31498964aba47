#ifndef MIRN_SESSION_REHEARSED_SESSION_H
#define MIRN_SESSION_REHEARSED_SESSION_H

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "session_actions.h"
#include "snapshot_reads.h"

/// What a request has been found to do.
struct RehearsedDeed {
  struct NamedObject {
    std::wstring type;  ///< "array", "controller", "disk" (any end device), "port", "raid" or "volume".
    std::wstring id;
  };

  boost::optional<PreparedCall> call;             ///< None: the library is not asked.
  std::map<std::wstring, std::int64_t> settings;  ///< To be stored, by the keys that clients know.
  std::vector<NamedObject> objects;               ///< That were looked up by id and found, each once.
};

/// Ends the handler of a request at its action. No exception of the standard's, nor one of ours: no handler
/// shall take it for a failure.
struct EndOfRehearsal {};

/// A session for one request that shall do nothing: reads come from one picture, and what the request comes
/// to is kept. Needs no lock and calls nothing. For one thread.
class RehearsedSession : public SnapshotReads, public SessionActions {
 public:
  RehearsedSession(Picture picture, std::int64_t locateTimeout);

  const RehearsedDeed& deed() const { return m_deed; }

  Picture picture() override { return m_picture; }

  /// True unless the deed would refuse the value ahead of the store; then it is kept.
  bool setLocateTimeout(std::int64_t seconds) override;
  std::int64_t getLocateTimeout() override { return m_locateTimeout; }

  // Keep what they find.
  std::vector<Array> getControllerArrays(const std::wstring& controllerId) override;
  std::vector<Port> getControllerPorts(const std::wstring& controllerId) override;
  std::vector<Volume> getControllerVolumes(const std::wstring& controllerId) override;
  boost::optional<Raid> findRaid(const std::wstring& id) override;
  boost::optional<Controller> findController(const std::wstring& id) override;
  boost::optional<Array> findArray(const std::wstring& id) override;
  boost::optional<EndDevice> findEndDevice(const std::wstring& id) override;
  std::vector<boost::optional<EndDevice>> findEndDevices(const std::vector<std::wstring>& ids) override;
  boost::optional<Port> findPort(const std::wstring& id) override;
  boost::optional<Volume> findVolume(const std::wstring& id) override;

 protected:
  /// Keeps the call and raises `EndOfRehearsal`.
  [[noreturn]] void carryOut(const PreparedCall& call) override;

 private:
  template <class Object>
  boost::optional<Object> kept(const wchar_t* type, boost::optional<Object> found);
  void keep(const wchar_t* type, const std::wstring& id);

  const Picture m_picture;
  const std::int64_t m_locateTimeout;
  RehearsedDeed m_deed;
};

#endif
