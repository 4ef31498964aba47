#ifndef MIRN_TESTS_INSIGHT_HISTORY_SAMPLE_ENTRIES_H
#define MIRN_TESTS_INSIGHT_HISTORY_SAMPLE_ENTRIES_H

#include <cstdint>
#include <string>
#include <utility>

#include "history/history_file.h"

namespace insight {

constexpr std::int64_t kSampleStart = 1'700'000'000'000;

/// The event with a number; a second after the one before.
inline Entry sampleEvent(std::uint64_t sequence, const std::wstring& disk = L"D1") {
  Entry entry;
  entry.epoch = "0123456789abcdef";
  entry.sequence = sequence;
  entry.atMs = kSampleStart + static_cast<std::int64_t>(sequence) * 1000;
  entry.kind = "event";
  entry.severity = sequence % 10 == 0 ? Severity::kWarning : Severity::kInfo;
  entry.object = {"disk", disk, L"Serial " + disk};
  entry.operation = "DISK_STATE_CHANGED";
  entry.body = {{"description", "Disk number " + std::to_string(sequence)}};
  return entry;
}

inline HistoryBatch sampleEvents(std::uint64_t first, std::uint64_t last) {
  HistoryBatch batch;
  for (std::uint64_t sequence = first; sequence <= last; ++sequence) {
    batch.entries.push_back(sampleEvent(sequence));
  }
  return batch;
}

inline Entry sampleCall(std::uint64_t sequence, const std::string& outcome) {
  Entry entry = sampleEvent(sequence);
  entry.kind = "audit";
  entry.actor = "first";
  entry.operation = "rebuildVolume";
  entry.outcome = outcome;
  return entry;
}

inline LastingRecord sampleRecord(const std::string& id, std::int64_t fromMs) {
  return {id, "rebuild", "V1", fromMs, {}, {{"id", id}, {"state", "running"}}};
}

inline LastingRecord ended(LastingRecord record, std::int64_t toMs) {
  record.toMs = toMs;
  record.body["state"] = "ended";
  return record;
}

}  // namespace insight

#endif
