#ifndef MIRN_TESTS_INSIGHT_SERVICE_SCRIPTED_PLUGIN_H
#define MIRN_TESTS_INSIGHT_SERVICE_SCRIPTED_PLUGIN_H

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <stdexcept>
#include <string>
#include <vector>

#include "plugin_extensions.h"

namespace insight {

/// Tells of a RAID 1 "Data" (V) on an array of two disks behind one controller as a test will have it.
class ScriptedPlugin final : public ovra::watched_plugin_1 {
 public:
  using ServiceObject = ovra::data_transfer::ServiceObject;

  /// As the machine is from now on.
  struct Machine {
    std::wstring volumeState = L"NORMAL";
    std::wstring diskState = L"NORMAL";  ///< Of the second disk.
    std::wstring work;                   ///< On the volume; empty: none.
    std::uint64_t percent = 0;
    std::int64_t takenAt = 0;
    std::int64_t failedAt = 0;
  };

  void become(const Machine& machine) {
    {
      const std::lock_guard<std::mutex> lock(m_mutex);
      m_machine = machine;
      ++m_position.revision;
    }
    m_changed.notify_all();
  }

  /// An event of the disk; those before the first `forgotten` are held no more.
  void tellEvent(const std::wstring& kind, const std::wstring& severity, std::uint64_t forgotten = 0) {
    {
      const std::lock_guard<std::mutex> lock(m_mutex);
      m_events.push_back({++m_position.sequence, kind, severity});
      m_forgotten = forgotten;
    }
    m_changed.notify_all();
  }

  void failToTell(bool fails) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_fails = fails;
  }

  ovra::PluginPosition position() override {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_position;
  }

  bool waitForChange(const ovra::PluginPosition& known, std::int64_t milliseconds) override {
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, std::chrono::milliseconds(milliseconds), [&] {
      return known.revision != m_position.revision || known.sequence != m_position.sequence;
    });
  }

  ServiceObject eventsAfter(std::uint64_t sequence, std::uint64_t limit) override {
    const std::lock_guard<std::mutex> lock(m_mutex);
    ServiceObject told;
    told.member(L"oldest") = m_events.empty() ? std::uint64_t{0} : m_forgotten + 1;
    told.member(L"events") = ServiceObject::array();
    ServiceObject& list = told.member(L"events");
    std::size_t count = 0;
    for (const Event& event : m_events) {
      if (event.number <= std::max(sequence, m_forgotten) || count == limit) continue;
      ServiceObject& form = list.at(count++);
      form.member(L"number") = event.number;
      form.member(L"moment") = std::uint64_t{1'700'000'000'000} + event.number;
      form.member(L"kind") = event.kind;
      form.member(L"severity") = event.severity;
      form.member(L"description") = std::wstring(L"What has happened");
      form.member(L"objectType") = std::wstring(L"DISK");
      form.member(L"objectId") = std::wstring(L"D2");
      form.member(L"objectName") = std::wstring(L"SATA S2");
    }
    return told;
  }

  ServiceObject picture() override {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_fails) throw std::runtime_error("no picture today");
    ServiceObject picture;
    ServiceObject& position = picture.member(L"position");
    position.member(L"epoch") = m_position.epoch;
    position.member(L"revision") = m_position.revision;
    position.member(L"structure") = m_position.structure;
    position.member(L"sequence") = m_position.sequence;
    picture.member(L"takenAt") = static_cast<std::uint64_t>(m_machine.takenAt);
    if (m_machine.failedAt != 0) {
      picture.member(L"failedAt") = static_cast<std::uint64_t>(m_machine.failedAt);
      picture.member(L"failure") = std::wstring(L"The library does not answer");
    }
    ServiceObject& state = picture.member(L"state");
    state.member(L"state") = std::wstring(L"NORMAL");
    if (!m_machine.work.empty()) {
      ServiceObject& work = state.member(L"inProgress").at(0);
      work.member(L"objectID") = std::wstring(L"V");
      work.member(L"action") = m_machine.work;
    }
    addController(picture.member(L"controllers").at(0));
    addArray(picture.member(L"arrays").at(0));
    addDisk(picture.member(L"enddevices").at(0), L"D1", L"S1", L"NORMAL", L"ARRAY_MEMBER");
    addDisk(picture.member(L"enddevices").at(1), L"D2", L"S2", m_machine.diskState, L"ARRAY_MEMBER");
    addDisk(picture.member(L"enddevices").at(2), L"D3", L"S3", L"NORMAL", L"SPARE");
    addVolume(picture.member(L"volumes").at(0));
    return picture;
  }

 private:
  struct Event {
    std::uint64_t number;
    std::wstring kind;
    std::wstring severity;
  };

  static void addController(ServiceObject& form) {
    form.member(L"id") = std::wstring(L"C");
    form.member(L"name") = std::wstring(L"Controller");
  }

  static void addArray(ServiceObject& form) {
    form.member(L"id") = std::wstring(L"A");
    form.member(L"name") = std::wstring(L"Array_0000");
    form.member(L"controllerIds").at(0) = std::wstring(L"C");
  }

  static void addDisk(ServiceObject& form, const std::wstring& id, const std::wstring& serial,
                      const std::wstring& state, const std::wstring& usage) {
    form.member(L"id") = id;
    form.member(L"deviceType") = std::wstring(L"DISK");
    form.member(L"diskType") = std::wstring(L"SATA");
    form.member(L"controllerId") = std::wstring(L"C");
    if (usage == L"ARRAY_MEMBER") form.member(L"arrayId") = std::wstring(L"A");
    form.member(L"state") = state;
    form.member(L"usage") = usage;
    form.member(L"serialNumber") = serial;
    form.member(L"totalSize") = std::uint64_t{1} << 40U;
  }

  void addVolume(ServiceObject& form) const {
    form.member(L"id") = std::wstring(L"V");
    form.member(L"name") = std::wstring(L"Data");
    form.member(L"arrayId") = std::wstring(L"A");
    form.member(L"state") = m_machine.volumeState;
    form.member(L"raidLevel") = std::wstring(L"RAID_1");
    form.member(L"migrProgress") = m_machine.percent;
    form.member(L"initialized") = true;
  }

  std::mutex m_mutex;
  std::condition_variable m_changed;
  Machine m_machine;
  ovra::PluginPosition m_position{L"0123456789abcdef", 1, 1, 0};
  std::vector<Event> m_events;
  std::uint64_t m_forgotten = 0;
  bool m_fails = false;
};

}  // namespace insight

#endif
