#include "arrays_listener.h"
#include "basic_listener.h"
#include "controllers_listener.h"
#include "enddevices_listener.h"
#include "events_listener.h"
#include "listeners/creation_requests.h"
#include "listeners/listener_requests.h"
#include "ports_listener.h"
#include "raids_listener.h"
#include "support/by_name.h"
#include "volumes_listener.h"

namespace {

struct Read {
  std::string name;
  std::unique_ptr<IListener> (*listener)(FakeSession&);
  std::string path;
  RequestParameters parameters = {};
};

template <class Listener>
std::unique_ptr<IListener> made(FakeSession& session) {
  return makeOn<Listener>(session);
}

class Reads : public testing::TestWithParam<Read> {};

TEST_P(Reads, TakeNoNoticeOfABody) {
  FakeSession session;
  arrangeSystem(session);
  session.ports = {aPort(L"31")};
  session.controllerArrays[L"12"] = {L"21"};
  session.controllerPorts[L"12"] = {L"31"};
  session.controllerVolumes[L"12"] = {L"1"};
  const auto listener = GetParam().listener(session);
  const auto outcomeWith = [&listener](const ServiceObject& sent) {
    return outcomeOf(*listener, {HttpMethod::kGet, GetParam().path, sent, GetParam().parameters});
  };
  const std::string outcome = outcomeWith({});
  EXPECT_EQ(outcome.find("Exception"), std::string::npos) << outcome;
  for (const ServiceObject& sent :
       {body({}), body({{"colour", "red"}}), list({"a"}), ServiceObject(L"text")}) {
    EXPECT_EQ(outcomeWith(sent), outcome);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Listeners, Reads,
    testing::Values(Read{"State", made<BasicListener>, "state"},
                    Read{"Version", made<BasicListener>, "version"},
                    Read{"Configuration", made<BasicListener>, "config"},
                    Read{"Raids", made<RaidsListener>, ""}, Read{"Raid", made<RaidsListener>, "71"},
                    Read{"RaidControllers", made<RaidsListener>, "71/controllers"},
                    Read{"Arrays", made<ArraysListener>, ""},
                    Read{"ArrayEndDevices", made<ArraysListener>, "21/enddevices"},
                    Read{"ArrayVolumes", made<ArraysListener>, "21/volumes"},
                    Read{"EndDevices", made<EndDevicesListener>, ""},
                    Read{"Controllers", made<ControllersListener>, ""},
                    Read{"ControllerEndDevices", made<ControllersListener>, "12/enddevices"},
                    Read{"ControllerArrays", made<ControllersListener>, "12/arrays"},
                    Read{"ControllerPorts", made<ControllersListener>, "12/ports"},
                    Read{"ControllerVolumes", made<ControllersListener>, "12/volumes"},
                    Read{"Ports", made<PortsListener>, ""}, Read{"Volumes", made<VolumesListener>, ""},
                    Read{"Events", made<EventsListener>, "", {{L"time", L"0"}}}),
    ByName());

}  // namespace
