#ifndef MIRN_TESTS_SYSTEM_STORY_H
#define MIRN_TESTS_SYSTEM_STORY_H

#include <boost/json/object.hpp>
#include <string>
#include <vector>

#include "system/system_host.h"

namespace host {

/// A story of the simulated machine as a client sees it. Time stands still but for `pass`, and the picture is
/// renewed by requests alone, so that each story has exactly one journal.
class Story : public SystemHost {
 protected:
  using Words = std::vector<std::string>;

  /// `scenario` is a file of the folder "scenarios"; empty: the embedded machine. `arguments` are further
  /// ones of the host.
  void begin(const std::string& scenario = "", std::vector<std::string> arguments = {});
  /// The machine still keeps its own rules, and the host stops in good order.
  void TearDown() override;

  /// A request to the simulator's controls.
  Reply control(const std::string& name, const boost::json::object& arguments = {});
  /// Something befalls the disk with this serial number, and a rescan shows it.
  void befall(const std::string& incident, const std::string& serialNumber);
  void pass(std::uint64_t seconds);
  void rescan();
  std::uint64_t callsOf(const std::string& operation);

  /// A request that goes well, and its answer.
  boost::json::value done(const std::string& method, const std::string& target,
                          const boost::json::object& body = {});
  /// The error id of a request that is refused.
  std::string refusal(const std::string& method, const std::string& target,
                      const boost::json::object& body = {});

  boost::json::object volume(const std::string& name) { return find("mirn/volumes", "name", name); }
  boost::json::object disk(const std::string& serialNumber) {
    return find("mirn/enddevices", "serialNumber", serialNumber);
  }
  std::string stateOf(const std::string& volumeName) { return text(volume(volumeName), "state"); }
  std::string usageOf(const std::string& serialNumber) { return text(disk(serialNumber), "usage"); }
  std::int64_t progressOf(const std::string& volumeName) {
    return volume(volumeName).at("migrProgress").to_number<std::int64_t>();
  }

  /// The target of a route of one volume or disk: its path key, its id and `action`.
  std::string ofVolume(const std::string& name, const std::string& action = "");
  std::string ofDisk(const std::string& serialNumber, const std::string& action = "");
  boost::json::array idsOf(const Words& serialNumbers);
  std::string idOf(const std::string& serialNumber) { return text(disk(serialNumber), "id"); }

  /// "TYPE of name" of each event, the newest first. Each has a time in the format of the journal.
  Words journal();

  static std::string text(const boost::json::object& object, const std::string& key) {
    return std::string(object.at(key).as_string());
  }

 private:
  void silenceMonitor();
};

}  // namespace host

#endif
