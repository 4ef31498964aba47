#include "service/entries.h"

namespace insight {

namespace {

Entry numbered(EntryNumbers& numbers, std::int64_t nowMs) {
  Entry entry;
  entry.epoch = numbers.epoch();
  entry.sequence = numbers.next();
  entry.atMs = nowMs;
  return entry;
}

}  // namespace

Entry entryOf(const AlarmChange& change, EntryNumbers& numbers, std::int64_t nowMs) {
  Entry entry = numbered(numbers, nowMs);
  entry.kind = "alarm";
  entry.severity = change.alarm.cause.severity;
  if (change.step == AlarmStep::kAcknowledged) entry.actor = change.alarm.acknowledgedBy;
  entry.object = change.alarm.cause.object;
  entry.operation = change.alarm.cause.kind;
  entry.outcome = wordOf(change.step);
  entry.body = formOf(change.alarm);
  return entry;
}

Entry entryOf(const JobChange& change, EntryNumbers& numbers, std::int64_t nowMs) {
  Entry entry = numbered(numbers, nowMs);
  entry.kind = "job";
  entry.severity = change.job.outcome == "failed" ? Severity::kWarning : Severity::kInfo;
  entry.actor = change.job.actor;
  entry.object = change.job.object;
  entry.operation = change.job.kind;
  entry.outcome = change.step == JobStep::kBegun ? "begun" : change.job.outcome;
  entry.body = formOf(change.job, nowMs);
  return entry;
}

Entry entryOf(const ClientChange& change, const std::string& outcome, std::int64_t nowMs) {
  Entry entry;
  entry.atMs = nowMs;
  entry.kind = "audit";
  entry.actor = change.actor;
  entry.object = change.object;
  entry.operation = change.operation;
  entry.outcome = outcome;
  entry.body = change.details;
  return entry;
}

Entry unknownEndOf(Entry begun, std::int64_t nowMs) {
  begun.row = 0;
  ++begun.sequence;
  begun.atMs = nowMs;
  begun.severity = Severity::kWarning;
  begun.outcome = "unknown";
  return begun;
}

Entry entryOf(const ServiceNote& note, EntryNumbers& numbers, std::int64_t nowMs) {
  Entry entry = numbered(numbers, nowMs);
  entry.kind = "service";
  entry.severity = note.severity;
  entry.object = note.object;
  entry.operation = note.operation;
  entry.outcome = note.outcome;
  entry.body = note.details;
  return entry;
}

Entry entryOfLostEvents(std::uint64_t count, EntryNumbers& numbers, std::int64_t nowMs) {
  const ServiceNote note{
      Severity::kWarning, {"service", L"", L"service"}, "events", "lost", {{"count", count}}};
  return entryOf(note, numbers, nowMs);
}

}  // namespace insight
