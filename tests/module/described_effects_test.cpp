#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "module/told_effects.h"
#include "module/told_routes.h"
#include "plugin_extensions.h"
#include "plugin_interface.h"
#include "support/body.h"
#include "support/default_settings.h"
#include "support/loaded_module.h"
#include "support/log_lines.h"
#include "support/text_form.h"
#include "vexl2_simulator.h"

// What the plug-in tells of its routes ahead is what they do to the simulated machine: work, effects, and
// that reading and what is harmless leave it alone.

namespace {

using testing::IsEmpty;
using Texts = std::set<std::string>;

constexpr char kFreeDisk1[] = "TB2T7790315";
constexpr char kFreeDisk2[] = "TB2T7790318";
constexpr char kSpare[] = "QV48021001C3";
constexpr char kFailedMember[] = "OD3T2210A409";
constexpr char kFreeNvme1[] = "OD3T2210A40C";
constexpr char kFreeNvme2[] = "OD3T2210A40F";
constexpr char kLyxMember[] = "OD1T9930B112";
constexpr char kFreeLyx[] = "OD1T9930B1F0";
constexpr char kJournal[] = "OP375C0071";
constexpr char kSmartDisk[] = "TB4T6610092";

/// A plug-in over a machine of its own, as it is embedded in the library. Its time stands still.
class ServedMachine {
 public:
  explicit ServedMachine(const LoadedModule& module) : m_plugin(module.registerPlugin()) {
    done(VexSimSetClockSpeed(0));
    done(VexSimCapEventWait(5));
    if (!m_plugin->initialize()) throw std::logic_error("the plug-in does not start");
  }
  ~ServedMachine() { m_plugin->finish(); }
  ServedMachine(const ServedMachine&) = delete;
  ServedMachine& operator=(const ServedMachine&) = delete;

  ServiceObject serve(const Request& request) { return ::serve(*m_plugin, request); }

  template <class Interface>
  Interface& as() {
    return dynamic_cast<Interface&>(*m_plugin);
  }

  /// As it is now.
  ServiceObject wholePicture() {
    serve(post(L"mirn", {L"rescan"}));
    return as<ovra::watched_plugin_1>().picture();
  }
  MachinePicture picture() { return MachinePicture(wholePicture()); }

  void fail(const char* disk) { done(VexSimFailDisk(disk)); }
  void pull(const char* disk) { done(VexSimPullDisk(disk)); }

  std::wstring disk(const char* serialNumber) { return idOf(L"disk", L"serialNumber", serialNumber); }
  std::wstring volume(const char* name) { return idOf(L"volume", L"name", name); }
  std::wstring array(const char* name) { return idOf(L"array", L"name", name); }
  std::wstring controller(const char* type) { return idOf(L"controller", L"type", type); }
  std::wstring port(const char* serialNumber) {
    return *picture().having(L"port", L"localDeviceId", disk(serialNumber)).begin();
  }

  ServiceObject disks(std::initializer_list<const char*> serialNumbers) {
    ServiceObject ids = ServiceObject::array();
    std::size_t count = 0;
    for (const char* const number : serialNumbers) ids.at(count++) = disk(number);
    return ids;
  }

  /// A volume "Pair" on two free disks.
  Request pair(const char* level) {
    return post(L"mirn/volumes", {},
                body({{"source", "DISK"},
                      {"name", "Pair"},
                      {"raidLevel", level},
                      {"size", "100000"},
                      {"disks", disks({kFreeDisk1, kFreeDisk2})}}));
  }
  Request ofVolume(const char* name, const wchar_t* what, const ServiceObject& body = ServiceObject::null()) {
    return put(L"mirn/volumes", {volume(name), what}, body);
  }
  /// Of the degraded volume.
  Request rebuild() {
    return ofVolume("Archive", L"rebuild", body({{"diskId", ServiceObject(disk(kFreeNvme1))}}));
  }
  Request ofDisk(const char* serialNumber, const wchar_t* what,
                 const ServiceObject& body = ServiceObject::null()) {
    return put(L"mirn/disks", {disk(serialNumber), what}, body);
  }

 private:
  static void done(VEX_STATUS status) {
    if (status != VEX_STATUS_SUCCESS) throw std::logic_error("status " + std::to_string(status));
  }

  std::wstring idOf(const wchar_t* type, const wchar_t* key, const char* text) {
    const ObjectIds ids = picture().having(type, key, utf8ToWide(text));
    if (ids.size() != 1) throw std::out_of_range(text);
    return *ids.begin();
  }

  std::shared_ptr<ovra::service_plugin_interface> m_plugin;
};

using Prepare = std::function<Request(ServedMachine&)>;

/// A request that a route takes, and all that must happen ahead of it.
struct Deed {
  std::string name;
  Prepare prepare;
  bool machineRepairs = false;  ///< The machine rebuilds by itself what now can be: no work of the request's.
};

std::vector<Deed> deedsOnControllersAndArrays() {
  return {
      {"rescan", [](ServedMachine&) { return post(L"mirn", {L"rescan"}); }},
      {"readPatrol",
       [](ServedMachine& m) {
         return put(L"mirn/controllers", {m.controller("Lyx"), L"readpatrol"}, body({{"state", "DISABLED"}}));
       }},
      {"rohi",
       [](ServedMachine& m) {
         return put(L"mirn/controllers", {m.controller("Lyx"), L"rohi"}, body({{"state", "DISABLED"}}));
       }},
      {"locate",
       [](ServedMachine& m) {
         return put(L"mirn/ports", {m.port(kFreeDisk1), L"locate"}, body({{"state", "ENABLED"}}));
       }},
      {"addDisks",
       [](ServedMachine& m) {
         return put(L"mirn/arrays", {m.array("Data_Array")}, body({{"disks", m.disks({kFreeLyx})}}));
       }},
      {"writeCache",
       [](ServedMachine& m) {
         const ServiceObject off = body({{"state", "DISABLED"}});
         return put(L"mirn/arrays", {m.array("System_Array"), L"writecache"}, off);
       }},
  };
}

std::vector<Deed> deedsOnDisks() {
  return {
      {"clear",
       [](ServedMachine& m) {
         m.serve(m.rebuild());
         m.serve(m.ofDisk(kFailedMember, L"marknormal"));
         return m.ofDisk(kFailedMember, L"clear");
       }},
      {"markSpare",
       [](ServedMachine& m) {
         return m.ofDisk(kFreeDisk1, L"spare", body({{"action", "MARK"}}));
       }},
      {"markSpareWhereOneIsWanted",
       [](ServedMachine& m) {
         return m.ofDisk(kFreeNvme1, L"spare", body({{"action", "MARK"}}));
       },
       true},
      {"unmarkSpare",
       [](ServedMachine& m) {
         return m.ofDisk(kSpare, L"spare", body({{"action", "UNMARK"}}));
       }},
      {"markNormal",
       [](ServedMachine& m) {
         m.fail(kFreeDisk1);
         return m.ofDisk(kFreeDisk1, L"marknormal");
       }},
      {"markMemberNormal", [](ServedMachine& m) { return m.ofDisk(kFailedMember, L"marknormal"); }, true},
      {"resetSmart", [](ServedMachine& m) { return m.ofDisk(kSmartDisk, L"resetsmart"); }},
      {"remove", [](ServedMachine& m) { return remove(L"mirn/disks", {m.disk(kFreeNvme2)}); }},
      {"removeMember", [](ServedMachine& m) { return remove(L"mirn/disks", {m.disk(kLyxMember)}); }},
  };
}

std::vector<Deed> creations() {
  return {
      {"createFromDisks", [](ServedMachine& m) { return m.pair("RAID_1"); }},
      {"createAroundADisk",
       [](ServedMachine& m) {
         Request request = m.pair("RAID_1");
         set(request.body, {"size", "0"});
         request.body.member(L"diskId") = m.disk(kFreeDisk1);
         return request;
       }},
      {"createWithAJournal",
       [](ServedMachine& m) {
         for (const char* const name : {"Scratch", "Database"}) {
           m.serve(remove(L"mirn/volumes", {m.volume(name)}));
         }
         ServiceObject order = body({{"source", "DISK"},
                                     {"name", "Journaled"},
                                     {"raidLevel", "RAID_5"},
                                     {"size", "100000"},
                                     {"rwhPolicy", "RWH_JOURNALING_DRIVE"},
                                     {"disks", m.disks({kLyxMember, "OD1T9930B113", "OD1T9930B11A"})}});
         order.member(L"journalingDriveId") = m.disk(kJournal);
         return post(L"mirn/volumes", {}, order);
       }},
      {"createInArray",
       [](ServedMachine& m) {
         m.serve(m.pair("RAID_1"));
         const MachinePicture picture = m.picture();
         ServiceObject order =
             body({{"source", "ARRAY"}, {"name", "Second"}, {"raidLevel", "RAID_1"}, {"size", "0"}});
         order.member(L"arrayId") = *picture.arraysOf(m.volume("Pair")).begin();
         return post(L"mirn/volumes", {}, order);
       }},
  };
}

std::vector<Deed> deedsOnVolumes() {
  const ServiceObject start = body({{"action", "START"}, {"repair", true}});
  return {
      {"init",
       [](ServedMachine& m) {
         m.serve(m.pair("RAID_1"));
         return m.ofVolume("Pair", L"init");
       }},
      {"verify", [=](ServedMachine& m) { return m.ofVolume("System", L"verify", start); }},
      {"cancelVerify",
       [=](ServedMachine& m) {
         m.serve(m.ofVolume("System", L"verify", start));
         return m.ofVolume("System", L"verify", body({{"action", "CANCEL"}}));
       }},
      {"resize",
       [](ServedMachine& m) {
         m.serve(m.pair("RAID_1"));
         return m.ofVolume("Pair", L"size", body({{"size", "200000"}}));
       }},
      {"cachePolicy",
       [](ServedMachine& m) {
         return m.ofVolume("System", L"cachepolicy", body({{"cachePolicy", "OFF"}}));
       }},
      {"rename",
       [](ServedMachine& m) {
         return m.ofVolume("System", L"name", body({{"name", "Other"}}));
       }},
      {"level",
       [](ServedMachine& m) {
         m.serve(m.pair("RAID_1"));
         return m.ofVolume("Pair", L"level", body({{"raidLevel", "RAID_0"}}));
       }},
      {"levelWithDisks",
       [](ServedMachine& m) {
         return m.ofVolume("System", L"level", body({{"raidLevel", "RAID_5"}, {"disks", m.disks({kSpare})}}));
       }},
      {"markVolumeNormal",
       [](ServedMachine& m) {
         m.serve(m.pair("RAID_0"));
         m.fail(kFreeDisk2);
         return m.ofVolume("Pair", L"marknormal");
       }},
      {"writeHole",
       [](ServedMachine& m) {
         return m.ofVolume("Database", L"rwh", body({{"rwhPolicy", "RWH_DISTRIBUTED"}}));
       }},
      {"writeHoleOfAMissingJournal",
       [](ServedMachine& m) {
         m.pull(kJournal);
         return m.ofVolume("Database", L"rwh", body({{"rwhPolicy", "RWH_OFF"}}));
       }},
      {"writeHoleJournal",
       [](ServedMachine& m) {
         ServiceObject order = body({{"rwhPolicy", "RWH_JOURNALING_DRIVE"}});
         order.member(L"journalingDriveId") = m.disk(kFreeLyx);
         return m.ofVolume("Database", L"rwh", order);
       }},
      {"rebuild", [](ServedMachine& m) { return m.rebuild(); }},
      {"rebuildOfAMissingDisk",
       [](ServedMachine& m) {
         m.pull(kFailedMember);
         return m.rebuild();
       }},
      {"delete", [](ServedMachine& m) { return remove(L"mirn/volumes", {m.volume("Scratch")}); }},
      {"deleteJournaled", [](ServedMachine& m) { return remove(L"mirn/volumes", {m.volume("Database")}); }},
      {"deleteLast", [](ServedMachine& m) { return remove(L"mirn/volumes", {m.volume("Archive")}); }},
      {"deleteLastOnAMissingDisk",
       [](ServedMachine& m) {
         m.pull(kFailedMember);
         return remove(L"mirn/volumes", {m.volume("Archive")});
       }},
      {"deleteOfAMissingJournal",
       [](ServedMachine& m) {
         m.pull(kJournal);
         return remove(L"mirn/volumes", {m.volume("Database")});
       }},
  };
}

std::vector<Deed> allDeeds() {
  std::vector<Deed> all;
  for (const auto& deeds : {deedsOnControllersAndArrays(), deedsOnDisks(), creations(), deedsOnVolumes()}) {
    all.insert(all.end(), deeds.begin(), deeds.end());
  }
  return all;
}

/// The words of the states that show a kind of work.
const std::set<std::wstring>& wordsOf(const std::wstring& kind) {
  static const std::map<std::wstring, std::set<std::wstring>> words = {
      {L"rebuild", {L"REBUILDING"}},
      {L"initialize", {L"INITIALIZING"}},
      {L"verify", {L"VERIFYING", L"VERIFYING_AND_FIXING"}},
      {L"migrate", {L"GENERAL_MIGRATION"}}};
  return words.at(kind);
}

class DescribedEffects : public testing::Test {
 protected:
  static Texts textsUnder(const wchar_t* key, const ServiceObject& route) {
    Texts texts;
    const ServiceObject& list = route.member(key);
    for (auto place = list.begin(); place != list.end(); ++place) {
      const ServiceObject& item = *(*place).value;
      texts.insert(wideToUtf8(item.isObject() ? item.member(L"text").toString() : item.toString()));
    }
    return texts;
  }

  std::vector<const ServiceObject*> routes(const std::function<bool(const ServiceObject&)>& wanted) const {
    std::vector<const ServiceObject*> found;
    const ServiceObject& all = m_told.member(L"routes");
    for (auto place = all.begin(); place != all.end(); ++place) {
      if (wanted(*(*place).value)) found.push_back((*place).value);
    }
    return found;
  }

  /// Work that has started is the work that is told, and of its kind.
  static void judgeWork(const ToldEffects& effects, const MachinePicture& before, const MachinePicture& after,
                        bool machineRepairs) {
    const std::map<std::wstring, std::wstring> told = effects.work();
    for (const auto& [volume, kind] : told) {
      const auto found = after.work().find(volume);
      ASSERT_NE(found, after.work().end()) << wideToUtf8(kind) << " is not under way";
      EXPECT_EQ(wordsOf(kind).count(found->second), 1u) << wideToUtf8(found->second);
    }
    bool repairs = false;
    for (const auto& [volume, word] : after.work()) {
      if (before.work().count(volume) != 0 || told.count(volume) != 0) continue;
      EXPECT_EQ(wideToUtf8(word), machineRepairs ? "REBUILDING" : "no work");
      repairs = true;
    }
    EXPECT_EQ(repairs, machineRepairs);
  }

  void judge(const Deed& deed) {
    SCOPED_TRACE(deed.name);
    ServedMachine machine(m_module);
    const Request request = deed.prepare(machine);
    const ServiceObject* const route = toldRouteOf(m_told, request);
    ASSERT_NE(route, nullptr);
    const MachinePicture before = machine.picture();
    machine.serve(request);
    const MachinePicture after = machine.picture();
    const ToldEffects effects(*route, request, before, after);
    EXPECT_THAT(effects.untold(), IsEmpty());
    judgeWork(effects, before, after, deed.machineRepairs);
    const std::wstring id = route->member(L"id").toString();
    m_done.insert(wideToUtf8(id));
    for (const std::string& text : effects.seen()) m_seen.insert(wideToUtf8(id) + ": " + text);
  }

  const DefaultSettings m_settings;
  LogLines m_log;
  const LoadedModule m_module{MIRN_TEST_MODULE};
  const ServiceObject m_told = dynamic_cast<ovra::described_plugin_1&>(*m_module.registerPlugin()).describe();
  Texts m_done;  ///< The ids of the routes.
  Texts m_seen;  ///< The effects, with the ids of their routes.
};

TEST_F(DescribedEffects, AreWhatEachRouteThatActsDoes) {
  for (const Deed& deed : allDeeds()) judge(deed);
  Texts acting, told;
  for (const ServiceObject* route :
       routes([](const ServiceObject& form) { return !textsUnder(L"operations", form).empty(); })) {
    const std::string id = wideToUtf8(route->member(L"id").toString());
    acting.insert(id);
    for (const std::string& text : textsUnder(L"effects", *route)) told.insert(id + ": " + text);
  }
  EXPECT_EQ(m_done, acting);
  EXPECT_EQ(m_seen, told) << "each effect is seen once at least";
}

TEST_F(DescribedEffects, OfReadsAreNone) {
  ServedMachine machine(m_module);
  const ServiceObject picture = machine.wholePicture();
  const auto anIdOf = [&](const std::wstring& type) {
    const wchar_t* const list = type == L"array" ? L"arrays" : L"controllers";
    const ServiceObject& first = *(*picture.member(list).begin()).value;
    return first.member(type == L"raid" ? L"raidId" : L"id").toString();
  };
  Texts operations;
  for (const ServiceObject* route : routes([](const ServiceObject&) { return true; })) {
    operations.merge(textsUnder(L"operations", *route));
  }
  const auto callsOfActions = [&] {
    std::uint64_t sum = 0;
    for (const std::string& operation : operations) {
      std::uint64_t calls = 0;
      EXPECT_EQ(VexSimCountCalls(operation.c_str(), &calls), VEX_STATUS_SUCCESS) << operation;
      sum += calls;
    }
    return sum;
  };
  const std::uint64_t before = callsOfActions();
  EXPECT_GT(before, 0u) << "the rescan is counted";
  unsigned reads = 0;
  for (const ServiceObject* route :
       routes([](const ServiceObject& form) { return form.member(L"effect").toString() == L"read"; })) {
    Request request = get(route->member(L"key").toString(), partsBehindKey(*route));
    for (std::wstring& part : request.segments) {
      if (part.front() == L'{') part = anIdOf(part.substr(1, part.size() - 4));
    }
    if (route->member(L"id").toString() == L"listEvents") request.parameters[L"time"] = L"60";
    machine.serve(request);
    ++reads;
  }
  EXPECT_EQ(reads, 18u);
  EXPECT_EQ(callsOfActions(), before);
  EXPECT_EQ(textForm(without("takenAt", machine.as<ovra::watched_plugin_1>().picture())),
            textForm(without("takenAt", picture)));
}

}  // namespace
