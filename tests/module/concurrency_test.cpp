#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <boost/thread/latch.hpp>
#include <memory>
#include <set>
#include <thread>

#include "module/request.h"
#include "support/body.h"
#include "support/default_settings.h"
#include "support/loaded_module.h"
#include "support/log_lines.h"
#include "vexl2_simulator.h"

// Many clients of the module at once, over the simulated library.

namespace {

using testing::Contains;
using testing::Each;
using testing::Not;
using testing::SizeIs;

constexpr unsigned kThreads = 16;
constexpr unsigned kRounds = 3;

using Texts = std::vector<std::string>;

/// The texts under a key of each object of a list.
Texts textsUnder(const char* key, const ServiceObject& list) {
  Texts texts;
  for (auto element = list.begin(); element != list.end(); ++element) {
    const ServiceObject& object = *(*element).value;
    texts.push_back(wideToUtf8(object.member(utf8ToWide(key)).toString()));
  }
  return texts;
}

std::set<std::string> setOf(const Texts& texts) { return {texts.begin(), texts.end()}; }

// Two reads are two pictures. Within one answer everything is of one picture.

/// Nothing is created and nothing goes: all objects are there, each once.
template <std::size_t kCount>
void judgeIds(const ServiceObject& list) {
  EXPECT_THAT(setOf(textsUnder("id", list)), SizeIs(kCount));
  EXPECT_THAT(textsUnder("id", list), SizeIs(kCount));
}

template <std::size_t kCount>
void judgeVolumes(const ServiceObject& list) {
  judgeIds<kCount>(list);
  EXPECT_THAT(setOf(textsUnder("name", list)), SizeIs(kCount));
  EXPECT_THAT(setOf(textsUnder("arrayId", list)), SizeIs(3));
}

template <std::size_t kCount>
void judgeEndDevices(const ServiceObject& list) {
  judgeIds<kCount>(list);
  EXPECT_THAT(setOf(textsUnder("controllerId", list)), SizeIs(4));
  EXPECT_THAT(setOf(textsUnder("arrayId", list)), SizeIs(3 + 1)) << "or none";
}

template <std::size_t kCount>
void judgePorts(const ServiceObject& list) {
  judgeIds<kCount>(list);
  EXPECT_EQ(setOf(textsUnder("connectedPortId", list)), setOf(textsUnder("id", list)));
  EXPECT_THAT(textsUnder("localDeviceId", list), Each(Not("")));
}

void judgeState(const ServiceObject& state) {
  EXPECT_EQ(state.member(L"state").toString(), L"WARNING") << "one volume is degraded all the time";
}

void judgeVersion(const ServiceObject& version) {
  EXPECT_EQ(version.member(L"pluginVersion").toString(), L"5.4.0.1465");
}

void judgeList(const ServiceObject& list) { EXPECT_TRUE(list.isArray()); }

struct Read {
  Request request;
  void (*judge)(const ServiceObject& answer);
};

struct Action {
  std::function<Request(unsigned client)> request;
  Texts refusals;  ///< What another client's action may lead to.
};

class ManyClients : public testing::Test {
 protected:
  void SetUp() override {
    VexSimSetClockSpeed(100);
    VexSimCapEventWait(5);
    ASSERT_TRUE(plugin->initialize());
    Request events = get(L"mirn/events");
    events.parameters[L"time"] = L"60";
    m_reads = {
        {get(L"mirn/raids"), judgeList},
        {get(L"mirn/controllers"), judgeIds<4>},
        {get(L"mirn/arrays"), judgeIds<3>},
        {get(L"mirn/enddevices"), judgeEndDevices<21>},
        {get(L"mirn/ports"), judgePorts<42>},
        {get(L"mirn/volumes"), judgeVolumes<4>},
        {events, judgeList},
        {get(L"mirn", {L"state"}), judgeState},
        {get(L"mirn", {L"version"}), judgeVersion},
    };
    m_actions = actions();
  }

  std::vector<Action> actions() {
    const std::wstring disk = idOf(L"mirn/enddevices", "serialNumber", "TB2T7790315");
    const std::wstring volume = idOf(L"mirn/volumes", "name", "Database");
    const std::wstring port = idOf(L"mirn/ports", "localDeviceId", wideToUtf8(disk));
    const auto always = [](const Request& request) { return [request](unsigned) { return request; }; };
    const auto spare = [&](const char* action) {
      return always(put(L"mirn/disks", {disk, L"spare"}, body({{"action", action}})));
    };
    const auto verify = [&](const ServiceObject& order) {
      return always(put(L"mirn/volumes", {volume, L"verify"}, order));
    };
    const auto rename = [volume](unsigned client) {
      const std::string name = "Client " + std::to_string(client);
      return put(L"mirn/volumes", {volume, L"name"}, body({{"name", name.c_str()}}));
    };
    const std::string wrongState = ": Item not in appropriate state for action to complete successfully";
    const std::string ofDisk = "ListenerException Mirn_DISK_INVALID_STATE" + wrongState;
    const std::string ofVolume = "MirnException Mirn_VOLUME_INVALID_STATE" + wrongState;
    const std::string nameInUse = "ListenerException INVALID_PARAMETER: Volume name is already in use";
    return {
        {always(post(L"mirn", {L"rescan"})), {}},
        {rename, {nameInUse}},
        {always(put(L"mirn/ports", {port, L"locate"}, body({{"state", "ENABLED"}}))), {}},
        {spare("MARK"), {ofDisk}},
        {spare("UNMARK"), {ofDisk}},
        {verify(body({{"action", "START"}, {"repair", true}})), {ofVolume}},
        {verify(body({{"action", "CANCEL"}})), {ofVolume}},
    };
  }

  std::wstring idOf(const std::wstring& path, const char* key, const std::string& text) {
    const ServiceObject list = serve(*plugin, get(path));
    for (auto element = list.begin(); element != list.end(); ++element) {
      const ServiceObject& object = *(*element).value;
      if (wideToUtf8(object.member(utf8ToWide(key)).toString()) == text)
        return object.member(L"id").toString();
    }
    throw std::out_of_range("no " + text);
  }

  void read(const Read& read) {
    const std::string outcome = outcomeOf([&] {
      const ServiceObject answer = serve(*plugin, read.request);
      read.judge(answer);
      return ServiceObject::null();
    });
    EXPECT_EQ(outcome, "null");
  }

  void act(const Action& action, unsigned client) {
    const std::string outcome = outcomeOf([&] {
      serve(*plugin, action.request(client));
      return ServiceObject::null();
    });
    Texts expected = action.refusals;
    expected.push_back("null");
    EXPECT_THAT(expected, Contains(outcome));
  }

  /// Everything there is, in an order of its own.
  void beClient(unsigned client) {
    for (unsigned turn = 0; turn < kRounds * m_reads.size(); ++turn) {
      read(m_reads[(turn + client) % m_reads.size()]);
      if (turn % m_reads.size() < m_actions.size())
        act(m_actions[(turn + client) % m_actions.size()], client);
    }
  }

  DefaultSettings settings;
  LogLines log;
  const LoadedModule module{MIRN_TEST_MODULE};
  std::shared_ptr<ovra::service_plugin_interface> plugin = module.registerPlugin();

 private:
  std::vector<Read> m_reads;
  std::vector<Action> m_actions;
};

TEST_F(ManyClients, ReadWholePicturesAndAreRefusedOnlyForEachOthersActions) {
  boost::latch start(kThreads);
  std::vector<std::thread> clients;
  for (unsigned client = 0; client < kThreads; ++client) {
    clients.emplace_back([&, client] {
      start.count_down_and_wait();
      beClient(client);
    });
  }
  for (std::thread& client : clients) client.join();
  EXPECT_EQ(plugin->getStatus(), 0);
  char broken[256] = "";
  EXPECT_EQ(VexSimCheck(broken, sizeof broken), VEX_STATUS_SUCCESS) << broken;
  plugin->finish();
  EXPECT_THAT(log.take(), testing::IsEmpty());
}

TEST_F(ManyClients, AreServedOrToldThatThePluginIsOfflineWhileItStops) {
  const std::string offline = "ListenerException Mirn_OFFLINE: Mirn plugin does not work";
  boost::latch start(kThreads + 1);
  std::vector<std::thread> clients;
  for (unsigned client = 0; client < kThreads; ++client) {
    clients.emplace_back([&] {
      start.count_down_and_wait();
      const auto state = [&] {
        judgeState(serve(*plugin, get(L"mirn", {L"state"})));
        return ServiceObject::null();
      };
      for (std::string outcome; outcome != offline;) {
        outcome = outcomeOf(state);
        EXPECT_THAT((Texts{"null", offline}), Contains(outcome));
      }
    });
  }
  start.count_down_and_wait();
  plugin->finish();
  for (std::thread& client : clients) client.join();
  EXPECT_EQ(plugin->getStatus(), 1);
}

}  // namespace
