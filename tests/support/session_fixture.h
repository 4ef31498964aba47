#ifndef MIRN_TESTS_SUPPORT_SESSION_FIXTURE_H
#define MIRN_TESTS_SUPPORT_SESSION_FIXTURE_H

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "mirn_session.h"
#include "scripted_library/scripted_library.h"
#include "support/default_settings.h"
#include "support/failure_of.h"
#include "support/log_lines.h"
#include "support/new_events.h"

/// A session whose patience with its own lock a test can end, and on whose machine threads can run out.
class ImpatientSession : public MirnSession {
 public:
  /// Once `start` is done, which sets the limit to 30 seconds. Ahead of it the limit is 0.
  void waitNoLongerThan(std::int64_t seconds) { m_lockTimeout = seconds; }
  std::int64_t longestWait() const { return m_lockTimeout; }

  /// The limit that every `start` from now on sets instead.
  void startWithPatience(std::int64_t seconds) { m_patience = seconds; }

  /// The next `start` finds that no thread can be launched.
  void runOutOfThreadsOnce() { m_noThreadLeft = true; }

 protected:
  std::int64_t lockTimeout() const override { return m_patience.value_or(MirnSession::lockTimeout()); }

  std::thread launchEventThread() override {
    if (std::exchange(m_noThreadLeft, false)) {
      throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
    }
    return MirnSession::launchEventThread();
  }

 private:
  std::optional<std::int64_t> m_patience;
  bool m_noThreadLeft = false;
};

/// Runs `use` on another thread, to its end: what it does while this thread is inside the session is done
/// beside it.
template <class Use>
void onAnotherThread(Use use) {
  std::thread(use).join();
}

/// The object of the picture that the library knows by this handle.
template <class Object>
Object withHandle(const std::vector<Object>& objects, VEX_HANDLE handle) {
  const auto found = std::find_if(objects.begin(), objects.end(),
                                  [handle](const Object& object) { return object.handle() == handle; });
  if (found == objects.end()) throw std::out_of_range("no object with handle " + std::to_string(handle));
  return *found;
}

/// A session over a fresh scripted library, with settings of its own, and its log lines and events at hand.
/// It isn't started: then nothing runs but what the test runs, and no lock is waited for.
class SessionTest : public testing::Test {
 protected:
  using Texts = std::vector<std::string>;
  using Change = std::function<void(ScriptedMachine&)>;

  void TearDown() override {
    m_library.events().release();
    m_session.stop();
    EXPECT_EQ(m_hooksRun, m_hooksPlanned) << "what was to run in the middle of a call";
  }

  /// Runs `use` in the middle of the next call of an operation. The test fails when there is no such call.
  template <class Use>
  void inTheMiddleOf(const std::string& operation, Use use) {
    ++m_hooksPlanned;
    m_library.before(onCall(operation), [this, use](const ScriptedCall&) mutable {
      ++m_hooksRun;
      use();
    });
  }

  /// The same on another thread, to its end.
  template <class Use>
  void during(const std::string& operation, Use use) {
    inTheMiddleOf(operation, [use] { onAnotherThread(use); });
  }

  /// The session knows the machine, changed so. No trace of that is left in the records.
  void givenPicture(const Change& change = nullptr) {
    if (change) m_library.change(change);
    m_session.refresh(false);
    m_library.clearCalls();
    m_log.take();
    m_events.take();
  }

  Volume volume(VEX_HANDLE handle) { return withHandle(m_session.getVolumes(), handle); }
  EndDevice device(VEX_HANDLE handle) { return withHandle(m_session.getEndDevices(), handle); }
  Array array(VEX_HANDLE handle) { return withHandle(m_session.getArrays(), handle); }
  Port port(VEX_HANDLE handle) { return withHandle(m_session.getPorts(), handle); }
  Controller controller(VEX_HANDLE handle) { return withHandle(m_session.getControllers(), handle); }

  ScriptedLibrary& m_library = ScriptedLibrary::fresh();
  DefaultSettings m_settings;
  LogLines m_log;
  NewEvents m_events;
  ImpatientSession m_session;

 private:
  int m_hooksPlanned = 0;
  std::atomic<int> m_hooksRun{0};
};

#endif
