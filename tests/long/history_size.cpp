// What a history of many entries costs: making it, where there is none yet, a start on it, and pages by each
// condition. Prints a line each. Takes the folder of its file, and how many entries.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "history/history.h"
#include "insight/history/sample_entries.h"

namespace {

using insight::HistoryQuery;

constexpr std::uint64_t kPart = 10'000;

double millisecondsOf(const std::function<void()>& run) {
  const auto begin = std::chrono::steady_clock::now();
  run();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

void fill(const std::filesystem::path& path, std::uint64_t entries) {
  insight::HistoryFile file(path);
  for (std::uint64_t first = 1; first <= entries; first += kPart) {
    insight::HistoryBatch batch = insight::sampleEvents(first, first + kPart - 1);
    for (insight::Entry& entry : batch.entries) {
      entry.object.id = L"D" + std::to_wstring(entry.sequence % 1000);
      if (entry.sequence % 100 == 0) entry = insight::sampleCall(entry.sequence, "done");
    }
    file.write(batch);
  }
}

struct Question {
  const char* name;
  void (*set)(HistoryQuery& query);
};

constexpr Question kQuestions[] = {
    {"newest", [](HistoryQuery&) {}},
    {"thousand", [](HistoryQuery& query) { query.limit = insight::kLargestPage; }},
    {"object", [](HistoryQuery& query) { query.objectId = "D7"; }},
    {"severity", [](HistoryQuery& query) { query.severity = insight::Severity::kWarning; }},
    {"actor", [](HistoryQuery& query) { query.actor = "first", query.withAudit = true; }},
    {"kind that is not there", [](HistoryQuery& query) { query.kind = "job"; }},
    {"first hour", [](HistoryQuery& query) { query.toMs = insight::kSampleStart + 3'600'000; }},
    {"text", [](HistoryQuery& query) { query.text = "number 77"; }},
    {"text that is not there", [](HistoryQuery& query) { query.text = "nowhere"; }},
};

/// The longest page, and how many it takes to the end or to fifty entries.
void ask(insight::History& history, const Question& question) {
  HistoryQuery query;
  question.set(query);
  double longest = 0;
  int pages = 0;
  std::size_t found = 0;
  do {
    insight::HistoryPage page;
    longest = std::max(longest, millisecondsOf([&] { page = history.page(query); }));
    query.cursor = page.next;
    found += page.items.size();
    ++pages;
  } while (!query.cursor.empty() && found < 50);
  std::printf("%-24s longest page %6.1f ms, %d page(s), %zu found\n", question.name, longest, pages, found);
}

}  // namespace

int main(int count, char** arguments) {
  if (count < 2) {
    std::fprintf(stderr, "usage: mirn_history_size FOLDER [ENTRIES]\n");
    return 2;
  }
  const std::filesystem::path path = std::filesystem::path(arguments[1]) / "history.db";
  const std::uint64_t entries = count > 2 ? std::strtoull(arguments[2], nullptr, 10) : 1'000'000;
  if (!std::filesystem::exists(path)) {
    std::printf("making %llu entries   %8.0f ms\n", static_cast<unsigned long long>(entries),
                millisecondsOf([&] { fill(path, entries); }));
  }
  std::printf("size                    %8ju KiB\n",
              static_cast<std::uintmax_t>(std::filesystem::file_size(path) / 1024));
  insight::History::Settings settings;
  settings.path = path;
  settings.nowMs = [] { return insight::kSampleStart; };
  std::optional<insight::History> history;
  std::printf("start                   %8.1f ms\n", millisecondsOf([&] { history.emplace(settings); }));
  for (const Question& question : kQuestions) ask(*history, question);
  return 0;
}
