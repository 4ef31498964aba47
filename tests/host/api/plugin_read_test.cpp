#include "api/plugin_read.h"

#include <gtest/gtest.h>

#include <deque>
#include <stdexcept>

#include "host/revisions/watched_machine.h"

namespace host {

namespace {

/// An exchange whose strand and threads are the test's: what is handed over waits until it is run.
class TriedExchange : public Exchange {
 public:
  void post(Step step) override {
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_steps.push_back(std::move(step));
    m_posted.notify_all();
  }
  bool work(Lane, Step task) override {
    if (isFull) return false;
    tasks.push_back(std::move(task));
    return true;
  }
  void park(std::chrono::milliseconds, Step onEnd) override { parked = std::move(onEnd); }
  bool isStopping() const override { return false; }
  void answer(std::shared_ptr<const Answer> given) override { answers.push_back(*given); }
  void answerInParts(OpenParts) override { ADD_FAILURE() << "reads are whole"; }

  /// Runs what is there until nothing is left.
  void run() {
    while (runTask() || runStep()) continue;
  }
  bool runTask() { return runFirst(tasks); }
  bool runStep() {
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_steps.empty()) return false;
    const Step step = std::move(m_steps.front());
    m_steps.pop_front();
    lock.unlock();
    step();
    return true;
  }
  void awaitStep() {
    std::unique_lock<std::mutex> lock(m_mutex);
    m_posted.wait(lock, [this] { return !m_steps.empty(); });
  }

  bool isFull = false;
  std::deque<Step> tasks;
  Step parked;
  std::vector<Answer> answers;

 private:
  static bool runFirst(std::deque<Step>& steps) {
    if (steps.empty()) return false;
    const Step step = std::move(steps.front());
    steps.pop_front();
    step();
    return true;
  }

  std::mutex m_mutex;
  std::condition_variable m_posted;
  std::deque<Step> m_steps;
};

class PluginReadTest : public testing::Test {
 protected:
  PluginReadTest() {
    m_rules.revisions = &m_revisions;
    m_rules.ask = [this](const Call&, const std::string&) {
      ++m_calls;
      if (m_changesMeanwhile) m_machine.change();
      return m_answer;
    };
  }

  std::shared_ptr<TriedExchange> begin(AnswerWishes wishes = {}, const std::wstring& name = L"volumes",
                                       const std::string& body = "") {
    const auto call = std::make_shared<Call>();
    call->target.segments = {L"api", L"v1", name};
    call->wishes = std::move(wishes);
    auto exchange = std::make_shared<TriedExchange>();
    std::make_shared<PluginRead>(m_rules, call, body)->begin(exchange);
    return exchange;
  }

  Answer answerTo(AnswerWishes wishes = {}) {
    const auto exchange = begin(std::move(wishes));
    exchange->run();
    return exchange->answers.at(0);
  }

  static std::string field(const Answer& answer, const std::string& name) {
    for (const auto& [fieldName, value] : answer.headers) {
      if (fieldName == name) return value;
    }
    return {};
  }

  static AnswerWishes waitingFor(const std::string& tag) {
    AnswerWishes wishes;
    wishes.ifNoneMatch = tag;
    wishes.prefer = "wait=60";
    return wishes;
  }

  WatchedMachine m_machine;
  Revisions m_revisions{m_machine, 1048576, 2};
  ReadRules m_rules;
  Answer m_answer = jsonAnswer("[1]");
  int m_calls = 0;
  bool m_changesMeanwhile = false;
};

TEST_F(PluginReadTest, AtAnUnchangedRevisionThePluginIsAskedOnce) {
  const Answer first = answerTo();
  const Answer second = answerTo();
  EXPECT_EQ(m_calls, 1);
  EXPECT_EQ(second.body.text(), first.body.text());
  EXPECT_EQ(&second.body.text(), &first.body.text()) << "without a copy";
  EXPECT_EQ(second.headers, first.headers);
  m_machine.change();
  answerTo();
  EXPECT_EQ(m_calls, 2);
}

TEST_F(PluginReadTest, CountsWhoIsAnsweredWithoutACall) {
  begin();
  const auto first = begin();
  EXPECT_EQ(m_revisions.misses, 1U);
  EXPECT_EQ(m_revisions.hits, 1U) << "one waits for the other's";
  m_machine.change();
  answerTo();
  answerTo();
  EXPECT_EQ(m_revisions.misses, 2U);
  EXPECT_EQ(m_revisions.hits, 2U);
  m_rules.isMomentary = true;
  begin({}, L"events")->run();
  EXPECT_EQ(m_revisions.misses + m_revisions.hits, 4U) << "of what may be kept alone";
}

TEST_F(PluginReadTest, AKeptAnswerTakesNoThread) {
  answerTo();
  const auto exchange = begin();
  EXPECT_EQ(exchange->answers.size(), 1U);
  EXPECT_TRUE(exchange->tasks.empty());
}

TEST_F(PluginReadTest, TheTagChangesExactlyWithTheBytes) {
  const std::string first = field(answerTo(), "ETag");
  m_machine.change();
  EXPECT_EQ(field(answerTo(), "ETag"), first);
  m_machine.change();
  m_answer = jsonAnswer("[2]");
  EXPECT_NE(field(answerTo(), "ETag"), first);
}

TEST_F(PluginReadTest, WhatChangesMeanwhileIsNotKept) {
  m_changesMeanwhile = true;
  answerTo();
  answerTo();
  EXPECT_EQ(m_calls, 2);
}

TEST_F(PluginReadTest, NeitherFailuresNorMomentaryAnswersAreKept) {
  m_answer.status = 503;
  EXPECT_EQ(field(answerTo(), "ETag"), "");
  answerTo();
  EXPECT_EQ(m_calls, 2);
  m_answer.status = 200;
  m_rules.isMomentary = true;
  answerTo();
  answerTo();
  EXPECT_EQ(m_calls, 4);
}

TEST_F(PluginReadTest, AReadWithABodyIsNobodyElses) {
  for (int i = 0; i < 2; ++i) begin({}, L"volumes", "{}")->run();
  EXPECT_EQ(m_calls, 2);
}

TEST_F(PluginReadTest, OneMakesTheAnswerForAll) {
  const auto first = begin();
  const auto second = begin();
  EXPECT_EQ(first->tasks.size(), 1U);
  EXPECT_TRUE(second->tasks.empty());
  first->run();
  second->run();
  EXPECT_EQ(m_calls, 1);
  EXPECT_EQ(second->answers.at(0).body.text(), "[1]");
}

TEST_F(PluginReadTest, AFailureReachesAllWhoWait) {
  m_rules.ask = [](const Call&, const std::string&) -> Answer { throw std::runtime_error("broken"); };
  const auto first = begin();
  const auto second = begin();
  first->run();
  second->run();
  EXPECT_EQ(first->answers.at(0).status, 500U);
  EXPECT_EQ(second->answers.at(0).status, 500U);
}

TEST_F(PluginReadTest, ThePackedFormIsMadeOfTheKeptOne) {
  m_answer = jsonAnswer('"' + std::string(2000, 'x') + '"');
  const std::string plain = field(answerTo(), "ETag");
  AnswerWishes wishes;
  wishes.acceptEncoding = "gzip";
  const Answer packed = answerTo(wishes);
  EXPECT_EQ(m_calls, 1);
  EXPECT_EQ(field(packed, "Content-Encoding"), "gzip");
  EXPECT_NE(field(packed, "ETag"), plain);
  m_machine.change();
  m_answer = jsonAnswer("[1]");
  EXPECT_EQ(field(answerTo(wishes), "Content-Encoding"), "") << "it does not pay";
}

TEST_F(PluginReadTest, WhoKnowsTheAnswerWaitsForAnother) {
  const std::string tag = field(answerTo(), "ETag");
  const auto exchange = begin(waitingFor(tag));
  EXPECT_TRUE(exchange->answers.empty());
  EXPECT_TRUE(exchange->parked);
  m_machine.change();  // but not this answer
  exchange->awaitStep();
  exchange->run();
  EXPECT_TRUE(exchange->answers.empty());
  m_answer = jsonAnswer("[2]");
  m_machine.change();
  exchange->awaitStep();
  exchange->run();
  ASSERT_EQ(exchange->answers.size(), 1U);
  EXPECT_EQ(exchange->answers[0].status, 200U);
  EXPECT_EQ(field(exchange->answers[0], "Preference-Applied"), "wait=60");
}

TEST_F(PluginReadTest, WhoeverIsOneTooManyIsRefused) {
  const std::string tag = field(answerTo(), "ETag");
  auto first = begin(waitingFor(tag));
  const auto second = begin(waitingFor(tag));
  EXPECT_EQ(begin(waitingFor(tag))->answers.at(0).status, 503U);
  first->parked = nullptr;  // its client leaves
  EXPECT_TRUE(begin(waitingFor(tag))->answers.empty());
}

TEST_F(PluginReadTest, WhoIsWokenWithTooManyOthersComesAgain) {
  const std::string tag = field(answerTo(), "ETag");
  const auto exchange = begin(waitingFor(tag));
  m_answer = jsonAnswer("[2]");
  m_machine.change();
  exchange->awaitStep();
  exchange->isFull = true;
  exchange->run();
  EXPECT_TRUE(exchange->answers.empty());
  exchange->isFull = false;
  exchange->parked();
  exchange->run();
  EXPECT_EQ(exchange->answers.at(0).body.text(), "[2]");
}

TEST_F(PluginReadTest, NobodyElseComesAgain) {
  const auto exchange = std::make_shared<TriedExchange>();
  exchange->isFull = true;
  std::make_shared<PluginRead>(m_rules, std::make_shared<Call>(), "")->begin(exchange);
  exchange->run();
  EXPECT_EQ(exchange->answers.at(0).status, 503U);
}

TEST_F(PluginReadTest, WithoutARevisionNothingIsKeptOrAwaited) {
  m_rules.revisions = nullptr;
  const std::string tag = field(answerTo(), "ETag");
  EXPECT_EQ(answerTo(waitingFor(tag)).status, 304U);
  EXPECT_EQ(m_calls, 2);
}

}  // namespace

}  // namespace host
