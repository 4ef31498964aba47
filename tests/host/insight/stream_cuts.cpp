#include "host/insight/stream_cuts.h"

#include <atomic>
#include <future>
#include <random>
#include <stdexcept>
#include <thread>

#include "host/insight/resuming_ear.h"
#include "host/insight/told_host.h"
#include "host/net/listening_client.h"

namespace host {

namespace {

constexpr int kRestartOf = 8;               // cuts, one is a restart
constexpr std::size_t kMostBytes = 12'000;  // that are heard at a time
constexpr std::int64_t kEntriesKept = 600;

/// Has things happen, on a thread of its own.
class Teller {
 public:
  Teller(ToldHost& host, unsigned seed) : m_thread([this, &host, seed] { run(host, seed); }) {}
  Teller(const Teller&) = delete;
  Teller& operator=(const Teller&) = delete;
  ~Teller() {
    m_isStopping = true;
    m_thread.join();
  }

 private:
  void run(ToldHost& host, unsigned seed) {
    std::mt19937 random(seed);
    while (!m_isStopping) {
      host.tell(1 + random() % 20);
      host.awaitKept();  // more than may wait for the file would be lost
      std::this_thread::sleep_for(std::chrono::microseconds(random() % 3000));
    }
  }

  std::atomic<bool> m_isStopping{false};
  std::thread m_thread;
};

ToldHost::Settings settingsIn(const std::string& folder) {
  ToldHost::Settings settings;
  settings.historyPath = folder + "/history.db";
  settings.entriesKept = kEntriesKept;
  settings.stream.held = 200;
  settings.stream.largestPart = 2048;
  return settings;
}

void listenFrom(ListeningClient& client, const ResumingEar& ear) {
  client.get(
      "/api/v1/events/stream",
      "Authorization: Bearer administer\r\nConnection: close\r\nLast-Event-ID: " + ear.lastId() + "\r\n");
}

void restart(ToldHost& host, ListeningClient& client, ResumingEar& ear) {
  auto stopped = std::async(std::launch::async, [&host] { return host.stop(); });
  const bool endedWell = client.awaitEnd();
  client.close();
  ear.hear(client.body());
  if (!stopped.get()) throw std::runtime_error("the stop waited for a stream");
  if (!endedWell || !client.isWhole()) throw std::runtime_error("the stop cut a stream off");
  host.start();
}

/// What was told last comes, too.
void hearToTheEnd(ToldHost& host, ResumingEar& ear) {
  ListeningClient client(host.port());
  listenFrom(client, ear);
  host.tell(1);
  for (ResumingEar now = ear; now.row() != host.told();) {
    if (!client.await(client.text().size() + 1)) throw std::runtime_error("the end is missing");
    now = ear;
    now.hear(client.body());
  }
  client.close();
  ear.hear(client.body());
}

}  // namespace

StreamCuts cutStreams(const std::string& folder, int cuts, unsigned seed) {
  std::mt19937 random(seed);
  ToldHost host(settingsIn(folder));
  host.tell(1);
  host.awaitKept();
  ResumingEar ear(host.epoch());
  StreamCuts result;
  {
    const Teller teller(host, seed);
    for (; result.cuts < cuts; ++result.cuts) {
      ListeningClient client(host.port());
      listenFrom(client, ear);
      // One that does not keep up is ended, and comes back.
      if (!client.await(1 + random() % kMostBytes) && !client.isWhole()) {
        throw std::runtime_error("the stream was cut off by the host");
      }
      if (random() % kRestartOf == 0) {
        restart(host, client, ear);
        ++result.restarts;
        continue;
      }
      client.close();
      ear.hear(client.body());
      if (random() % kRestartOf == 0) host.keep(kEntriesKept + 600);  // while nobody hears
    }
  }
  hearToTheEnd(host, ear);
  result.told = host.told();
  result.heard = ear.entries();
  result.gaps = ear.gaps();
  result.missing = ear.missing();
  result.farewells = ear.farewells();
  return result;
}

}  // namespace host
