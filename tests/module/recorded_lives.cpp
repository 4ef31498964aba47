#include "module/recorded_lives.h"

#include <atomic>
#include <thread>

#include "http_method.h"
#include "module/action_requests.h"
#include "module/served_module.h"
#include "module/varied_requests.h"
#include "scripted_library/small_machine.h"
#include "support/text_form.h"

namespace {

/// Such as `PUT mirn/volumes/51/name {name: "Fotos"}`.
std::string textOf(const Request& request) {
  static const char* const kMethods[] = {"", "GET ", "POST ", "PUT ", "DELETE "};
  std::string text = kMethods[request.method] + wideToUtf8(request.path);
  for (const std::wstring& segment : request.segments) text += '/' + wideToUtf8(segment);
  return request.body.isNull() ? text : text + ' ' + textForm(request.body);
}

/// One plug-in over a fresh library with one machine.
class RecordedLife {
 public:
  RecordedLife(CallRecord& record, const LoadedModule& module, const ScriptedMachine& machine)
      : m_record(record), m_library(ScriptedLibrary::fresh()), m_served(module) {
    m_library.setMachine(machine);
  }

  void start(const std::string& heading = "Start") {
    m_record.step(heading, [this] {
      m_served.start();
      return "";
    });
  }

  /// Without a word of it.
  void startUnrecorded() { m_served.start(); }

  void startInVain() {
    m_record.step("StartInVain", [this] { return m_served->initialize() ? "started" : "not started"; });
  }

  void wake(const std::string& heading, VEX_STATUS status) {
    m_record.step(heading, [=] {
      m_library.events().wakeAndSettle(status);
      return "";
    });
  }

  void probe() {
    m_record.step("Probe", [this] { return "= " + std::to_string(m_served->getStatus()); });
  }

  /// Lists are left out of what is written of the answer: they are of many lines and of no call.
  void serve(
      const std::string& heading, const Request& request, const std::function<void()>& ahead = [] {}) {
    m_record.step(heading, [&] {
      ahead();
      const std::string outcome = m_served.outcomeOf(request);
      return textOf(request) + (request.method == HttpMethod::kGet ? "" : "\n= " + outcome);
    });
  }

  /// Chance has it how often the event thread waits before it sees that it is to end: those calls are left
  /// out. No wait ends by a status that would bring a snapshot.
  void finish() {
    const auto end = [this] {
      std::atomic<bool> finished{false};
      std::thread waker([&] {
        while (!finished) {
          m_library.events().wake(VEX_STATUS_BUSY);
          std::this_thread::yield();
        }
      });
      m_served->finish();
      finished = true;
      waker.join();
      m_library.events().reset();
      return "";
    };
    m_record.step("Finish", end, "VexEventWait");
  }

  ScriptedLibrary& library() { return m_library; }

 private:
  CallRecord& m_record;
  ScriptedLibrary& m_library;
  ServedModule m_served;
};

}  // namespace

void recordLives(CallRecord& record, const LoadedModule& module) {
  {
    RecordedLife life(record, module, variedMachine());
    life.start();
    life.probe();
    life.wake("WaitThatSeesAChange", VEX_STATUS_SUCCESS);
    life.wake("WaitThatTimesOut", VEX_STATUS_TIMEOUT);
    life.wake("WaitThatFails", VEX_STATUS_FAILED);
    life.library().change([](ScriptedMachine& machine) {
      machine.volumes.remove(small_machine::kDataVolume);
      machine.endDevices.remove(small_machine::kFree2);
    });
    life.wake("WaitThatSeesLess", VEX_STATUS_SUCCESS);
    life.finish();
    life.finish();
    life.start("StartAgain");
    life.finish();
  }
  RecordedLife life(record, module, ScriptedMachine());
  life.start("StartWithoutHardware");
  life.finish();
}

void recordActions(CallRecord& record, const LoadedModule& module) {
  const ScriptedMachine machine = tinyMachine("Array");
  RecordedLife life(record, module, machine);
  life.startUnrecorded();
  for (const ActionRequest& row : actionRequests()) {
    // The picture of the machine as it was, whatever the row before made of it.
    life.library().setMachine(machine);
    life.library().events().wakeAndSettle();
    life.serve(row.name, row.request, [&] {
      life.library().effect(onCall(row.operation),
                            [&row](ScriptedMachine& changed, const ScriptedCall&) { row.effect(changed); });
    });
  }
  life.finish();
}

void recordVariations(CallRecord& record, const LoadedModule& module) {
  RecordedLife life(record, module, variedMachine());
  life.startUnrecorded();
  for (const VariedRequest& row : variedRequests()) life.serve(row.name, row.request);
  life.finish();
}

void recordRefusals(CallRecord& record, const LoadedModule& module) {
  RecordedLife life(record, module, tinyMachine("Array"));
  ScriptedLibrary& library = life.library();
  library.answer(onCall("VexInitialize"), VEX_STATUS_UNSUPPORTED_PLATFORM);
  life.startInVain();
  library.answer(onCall("VexGetEventHandle"), VEX_STATUS_FAILED);
  life.start("StartWithoutEvents");
  for (const char* const operation :
       {"VexRescan", "VexSessionOpen", "VexGetArrayHandles", "VexGetVolumeInfo", "VexGetRaidLevelInfo"}) {
    life.serve("Refused" + std::string(operation + 3), post(L"mirn", {L"rescan"}),
               [&] { library.answer(onCall(operation), VEX_STATUS_BUSY); });
  }
  // The number of the status is closed for the session's: none that is open has it.
  life.serve("RefusedSessionClose", post(L"mirn", {L"rescan"}),
             [&] { library.answer(onCall("VexSessionClose"), VEX_STATUS_INTERNAL_ERROR); });
  life.serve("GrowingMachine", post(L"mirn", {L"rescan"}), [&] {
    library.before(onCall("VexGetArrayHandles", 2), [&](const ScriptedCall&) {
      library.change([](ScriptedMachine& machine) { machine.addArray(49, "Late", {}); });
    });
  });
  life.finish();
}
