#include <gmock/gmock.h>

#include <set>

#include "history/history_file.h"
#include "insight/history/sample_entries.h"
#include "support/by_name.h"
#include "support/temporary_folder.h"

namespace insight {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

/// Twelve events of two disks, and two calls.
class HistoryPageTest : public testing::Test {
 protected:
  HistoryPageTest() {
    HistoryBatch batch;
    for (std::uint64_t sequence = 1; sequence <= 12; ++sequence) {
      batch.entries.push_back(sampleEvent(sequence, sequence % 2 == 0 ? L"D2" : L"D1"));
    }
    batch.entries.push_back(sampleCall(100, "begun"));
    batch.entries.push_back(sampleCall(101, "done"));
    m_file.write(batch);
  }

  std::filesystem::path path() const { return (m_folder / "history.db").native(); }

  /// The sequences of all pages.
  std::vector<std::uint64_t> found(HistoryQuery query) {
    std::vector<std::uint64_t> sequences;
    do {
      HistoryPage page = m_reader.page(query);
      EXPECT_LE(page.items.size(), query.limit);
      for (const Entry& entry : page.items) sequences.push_back(entry.sequence);
      query.cursor = page.next;
    } while (!query.cursor.empty());
    return sequences;
  }

  TemporaryFolder m_folder;
  HistoryFile m_file{path()};
  HistoryReader m_reader{path()};
};

struct QueryCase {
  const char* name;
  HistoryQuery (*query)();
  std::vector<std::uint64_t> found;
};

class HistoryQueryTest : public HistoryPageTest, public testing::WithParamInterface<QueryCase> {};

TEST_P(HistoryQueryTest, FindsWhatIsWanted) { EXPECT_EQ(found(GetParam().query()), GetParam().found); }

template <class Set>
HistoryQuery queryWith(const Set& set) {
  HistoryQuery query;
  set(query);
  return query;
}

INSTANTIATE_TEST_SUITE_P(
    Queries, HistoryQueryTest,
    testing::Values(
        QueryCase{"Everything", [] { return HistoryQuery(); }, {12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1}},
        QueryCase{"WithAudit",
                  [] { return queryWith([](auto& q) { q.withAudit = true, q.kind = "audit"; }); },
                  {101, 100}},
        QueryCase{"AuditIsHidden", [] { return queryWith([](auto& q) { q.kind = "audit"; }); }, {}},
        QueryCase{"From",
                  [] { return queryWith([](auto& q) { q.fromMs = kSampleStart + 10'000; }); },
                  {12, 11, 10}},
        QueryCase{"To", [] { return queryWith([](auto& q) { q.toMs = kSampleStart + 3'000; }); }, {2, 1}},
        QueryCase{
            "Severity", [] { return queryWith([](auto& q) { q.severity = Severity::kWarning; }); }, {10}},
        QueryCase{"Object",
                  [] { return queryWith([](auto& q) { q.objectType = "disk", q.objectId = "D2"; }); },
                  {12, 10, 8, 6, 4, 2}},
        QueryCase{"OtherType", [] { return queryWith([](auto& q) { q.objectType = "volume"; }); }, {}},
        QueryCase{"Actor",
                  [] { return queryWith([](auto& q) { q.actor = "first", q.withAudit = true; }); },
                  {101, 100}},
        QueryCase{"TextOfDetails", [] { return queryWith([](auto& q) { q.text = "NUMBER 7"; }); }, {7}},
        QueryCase{"TextOfAName",
                  [] { return queryWith([](auto& q) { q.text = "Serial D1"; }); },
                  {11, 9, 7, 5, 3, 1}},
        QueryCase{"TextOfAnOutcome",
                  [] { return queryWith([](auto& q) { q.text = "done", q.withAudit = true; }); },
                  {101}},
        QueryCase{"MarksAreNoPatterns", [] { return queryWith([](auto& q) { q.text = "number_7"; }); }, {}},
        QueryCase{"PercentIsNoPattern", [] { return queryWith([](auto& q) { q.text = "n%7"; }); }, {}},
        QueryCase{"ByTwos",
                  [] { return queryWith([](auto& q) { q.limit = 2, q.objectId = "D1"; }); },
                  {11, 9, 7, 5, 3, 1}},
        QueryCase{"All",
                  [] {
                    return queryWith([](auto& q) {
                      q.kind = "event", q.objectId = "D1", q.text = "disk", q.fromMs = kSampleStart + 4'000,
                      q.toMs = kSampleStart + 9'000;
                    });
                  },
                  {7, 5}}),
    ByName());

TEST_F(HistoryPageTest, WhatComesMeanwhileMovesNoPage) {
  HistoryQuery query;
  query.limit = 5;
  const HistoryPage first = m_reader.page(query);
  HistoryBatch more = sampleEvents(200, 220);
  m_file.write(more);
  query.cursor = first.next;
  const HistoryPage second = m_reader.page(query);
  ASSERT_THAT(second.items, SizeIs(5));
  EXPECT_EQ(second.items.front().sequence, 7U);
}

TEST_F(HistoryPageTest, ALimitIsHeld) {
  HistoryBatch more = sampleEvents(200, 2000);
  m_file.write(more);
  HistoryQuery query;
  query.limit = 5000;
  EXPECT_THAT(m_reader.page(query).items, SizeIs(kLargestPage));
}

TEST_F(HistoryPageTest, SpreadEntriesAreFoundOverLongStretches) {
  HistoryBatch more = sampleEvents(1000, 20'000);
  more.entries.front().operation = "NEEDLE";
  more.entries.back().operation = "NEEDLE";
  m_file.write(more);
  HistoryQuery query;
  query.text = "needle";
  EXPECT_THAT(found(query), ElementsAre(20'000U, 1000U));
}

class BadCursorTest : public HistoryPageTest, public testing::WithParamInterface<const char*> {};

TEST_P(BadCursorTest, IsRefused) {
  HistoryQuery query;
  query.cursor = GetParam();
  EXPECT_THROW(m_reader.page(query), BadCursor);
}

INSTANTIATE_TEST_SUITE_P(Cursors, BadCursorTest,
                         testing::Values("e", "12", "e1x", "e-1", "e9999999999999999999", "E1", " e1"));

TEST(EntryForm, SaysNullWhereNothingApplies) {
  Entry entry;
  entry.row = 7;
  entry.atMs = 1'763'773'500'250;
  entry.kind = "service";
  EXPECT_EQ(formOf(entry), (boost::json::object{{"row", 7},
                                                {"at", "2025-11-22T01:05:00.250Z"},
                                                {"kind", "service"},
                                                {"severity", "info"},
                                                {"actor", nullptr},
                                                {"object", nullptr},
                                                {"operation", nullptr},
                                                {"outcome", nullptr},
                                                {"details", boost::json::object()}}));
}

TEST(EntryForm, NamesItsObject) {
  EXPECT_EQ(formOf(sampleEvent(1)).at("object"),
            (boost::json::object{{"type", "disk"}, {"id", "D1"}, {"name", "Serial D1"}}));
}

TEST(SeverityWords, AreReadBack) {
  EXPECT_EQ(severityOf("critical"), Severity::kCritical);
  EXPECT_EQ(severityOf("unknown"), Severity::kUnknown);
  EXPECT_EQ(severityOf("bad"), std::nullopt);
}

}  // namespace
}  // namespace insight
