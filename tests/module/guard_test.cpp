#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <thread>
#include <vector>

#include "module/object_ids.h"
#include "module/served_module.h"
#include "plugin_extensions.h"
#include "scripted_library/scripted_library.h"
#include "service_exceptions.h"
#include "support/default_settings.h"
#include "support/log_lines.h"

// Changes on the condition that the machine is as the client knows it.

namespace {

using namespace small_machine;
using ovra::PluginPosition;
using ovra::common::HttpClientErrorException;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kServed[] = "served";
constexpr char kChanged[] = "412 The machine has changed meanwhile";

class Guard : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(m_guarded);
    ASSERT_TRUE(m_watched);
    m_served.start();
    m_known = m_watched->position();
    m_library.effect(onEveryCall("VexVolumeRename"), [](ScriptedMachine& machine, const ScriptedCall& call) {
      setText(machine.volumes.at(static_cast<VEX_HANDLE>(call.arguments[0].number)).name,
              call.arguments[1].bytes);
    });
    m_library.clearCalls();
  }

  std::string outcomeAt(const PluginPosition& known, const Request& request) {
    try {
      m_guarded->handleRequestAt(known.epoch, known.structure, request.path, request.method, request.segments,
                                 request.parameters, request.body);
      return kServed;
    } catch (const HttpClientErrorException& error) {
      return std::to_string(error.status) + " " + error.what();
    } catch (const std::exception& error) {
      return error.what();
    }
  }

  static Request rename(const std::string& name) {
    return put(L"mirn/volumes", {idOf("volume", kDataVolume), L"name"}, body({{"name", name.c_str()}}));
  }

  ScriptedLibrary& m_library = ScriptedLibrary::fresh();
  const DefaultSettings m_settings;
  LogLines m_log;
  const LoadedModule m_module{MIRN_TEST_MODULE};
  ServedModule m_served{m_module};
  const std::shared_ptr<ovra::guarded_plugin_1> m_guarded = m_served.as<ovra::guarded_plugin_1>();
  const std::shared_ptr<ovra::watched_plugin_1> m_watched = m_served.as<ovra::watched_plugin_1>();
  PluginPosition m_known;
};

TEST_F(Guard, LetsThroughWhoKnowsTheMachine) {
  EXPECT_EQ(outcomeAt(m_known, rename("Fotos")), kServed);
  EXPECT_THAT(m_library.actionTexts(), ElementsAre("VexVolumeRename(52, \"Fotos\")"));
  EXPECT_EQ(outcomeAt(m_watched->position(), rename("Films")), kServed);
}

TEST_F(Guard, RefusesWhoKnowsAnotherMachine) {
  PluginPosition other = m_known;
  other.structure += 1;
  EXPECT_EQ(outcomeAt(other, rename("Fotos")), kChanged);
  other = m_known;
  other.epoch.back() = other.epoch.back() == L'0' ? L'1' : L'0';
  EXPECT_EQ(outcomeAt(other, rename("Fotos")), kChanged);
  EXPECT_THAT(m_library.calls(), IsEmpty());
}

TEST_F(Guard, LooksAtTheConditionLast) {
  PluginPosition other = m_known;
  other.structure += 1;
  EXPECT_EQ(outcomeAt(other, rename("System")), "Volume name is already in use");
}

TEST_F(Guard, KeepsNobodyFromReading) {
  PluginPosition other = m_known;
  other.structure += 1;
  EXPECT_EQ(outcomeAt(other, get(L"mirn/volumes")), kServed);
}

TEST_F(Guard, LetsNothingThroughWhileThePluginDoesNotWork) {
  m_library.events().release();
  m_served->finish();
  EXPECT_EQ(outcomeAt(m_known, get(L"mirn/volumes")), "Mirn plugin does not work");
  EXPECT_EQ(outcomeAt(m_known, rename("Fotos")), "Mirn plugin does not work");
}

TEST_F(Guard, HoldsForSettings) {
  ServiceObject order;
  order.member(L"locate_timeout") = std::uint64_t{60};
  const Request request = put(L"mirn", {L"config"}, order);
  const std::string before = m_settings.image();
  PluginPosition other = m_known;
  other.structure += 1;
  EXPECT_EQ(outcomeAt(other, request), kChanged);
  EXPECT_EQ(m_settings.image(), before);
  EXPECT_EQ(outcomeAt(m_known, request), kServed);
  EXPECT_NE(m_settings.image(), before);
}

TEST_F(Guard, LetsOneOfAHundredThrough) {
  constexpr int kClients = 100;
  std::vector<std::future<std::string>> outcomes;
  for (int client = 0; client < kClients; ++client) {
    outcomes.push_back(std::async(std::launch::async, [this, client] {
      return outcomeAt(m_known, rename("Client " + std::to_string(client)));
    }));
  }
  int served = 0;
  int refused = 0;
  for (std::future<std::string>& outcome : outcomes) {
    const std::string text = outcome.get();
    served += text == kServed ? 1 : 0;
    refused += text == kChanged ? 1 : 0;
  }
  EXPECT_EQ(served, 1);
  EXPECT_EQ(refused, kClients - 1);
  EXPECT_THAT(m_library.actionTexts(), testing::SizeIs(1));
}

TEST_F(Guard, RefusesWhenTheMonitorExchangesThePictureBetweenCheckAndCall) {
  std::future<std::string> outcome;
  // The monitor's: it holds the ownership that a change waits for, and reads go on.
  m_library.before(onCall("VexSessionOpen"), [&](const ScriptedCall&) {
    m_library.change([](ScriptedMachine& machine) {
      machine.volumes.at(kSystemVolume).state = VEX_VOLUME_STATE_DEGRADED;
    });
    outcome = std::async(std::launch::async, [this] { return outcomeAt(m_known, rename("Fotos")); });
    EXPECT_EQ(outcome.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
  });
  m_library.events().wakeAndSettle();
  ASSERT_TRUE(outcome.valid());
  EXPECT_EQ(outcome.get(), kChanged);
  EXPECT_THAT(m_library.actionTexts(), IsEmpty());
}

}  // namespace
