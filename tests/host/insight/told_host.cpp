#include "host/insight/told_host.h"

#include <algorithm>
#include <thread>

#include "insight/history_export_endpoint.h"
#include "insight/stream_endpoint.h"

namespace host {

namespace {

constexpr std::int64_t kStart = 1'700'000'000'000;

/// All that the endpoints ask of a plug-in.
class NamedPlugin final : public ovra::plugin_interface {
 public:
  bool initialize() override { return true; }
  void finish() override {}
  std::int32_t getStatus() override { return 0; }
  const std::wstring& getShortName() const override { return m_name; }
  const std::wstring& getName() const override { return m_name; }
  const PluginVersion& getVersion() const override { return m_version; }
  const std::wstring& getCode() const override { return m_name; }
  const std::wstring& getApiVersion() const override { return m_apiVersion; }

 private:
  const std::wstring m_name = L"mirn";
  const std::wstring m_apiVersion = L"v1";
  const PluginVersion m_version{1, 0, 0, 0};
};

insight::Entry numbered(std::uint64_t number, std::size_t bytes, const std::string& kind) {
  insight::Entry entry;
  entry.epoch = "0123456789abcdef";
  entry.sequence = number;
  entry.atMs = kStart + static_cast<std::int64_t>(number) * 1000;
  entry.kind = kind;
  entry.operation = "DISK_STATE_CHANGED";
  entry.object = {"disk", L"D1", L"Disk"};
  entry.body = {{"number", number}, {"filler", std::string(bytes, 'x')}};
  return entry;
}

}  // namespace

void ToldHost::start() {
  insight::History::Settings history;
  history.path = m_settings.historyPath;
  history.bounds.entries = m_settings.entriesKept;
  history.betweenPrunings = std::chrono::milliseconds(5);
  history.nowMs = [] { return kStart; };
  const bool isKept = !m_settings.historyPath.empty();
  m_stream = std::make_shared<insight::Stream>(isKept ? &m_past : nullptr, m_settings.stream);
  history.listener = [this](const std::string& epoch, const insight::Entry& entry) {
    m_stream->tell(epoch, entry);
  };
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_history = std::make_shared<insight::History>(std::move(history));
  m_past.use(*m_history);
  const NamedPlugin plugin;
  EndpointTable table;
  addStreamEndpoint(table, plugin, m_stream, m_settings.mostListeners);
  addHistoryExportEndpoint(table, plugin, m_history);
  m_served = std::make_unique<ServedTable>(std::move(table), tokens, m_settings.options);
}

bool ToldHost::stop() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (!m_served) return true;
  m_stream->stop();
  const bool isDone = m_served->stop();
  m_served.reset();
  m_history.reset();
  m_stream.reset();
  return isDone;
}

void ToldHost::tell(std::uint64_t count, std::size_t bytes, const std::string& kind) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (!m_history) return;
  insight::HistoryBatch batch;
  for (std::uint64_t i = 0; i < count; ++i) batch.entries.push_back(numbered(++m_told, bytes, kind));
  m_history->add(std::move(batch));
}

void ToldHost::keep(std::uint64_t count, std::size_t bytes) {
  constexpr std::uint64_t kAtOnce = 5000;
  for (std::uint64_t part = 0; count != 0; count -= part) {
    part = std::min(count, kAtOnce);
    tell(part, bytes);
    awaitKept();
  }
}

void ToldHost::awaitKept() {
  const auto last = static_cast<std::int64_t>(told());
  const auto isKept = [&] {
    const std::lock_guard<std::mutex> lock(m_mutex);
    return !m_history || m_past.newestRow() >= last;
  };
  while (!isKept()) std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

}  // namespace host
