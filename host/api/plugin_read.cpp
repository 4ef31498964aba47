#include "api/plugin_read.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "answers/answer_fields.h"
#include "answers/entity_tag.h"
#include "answers/preferences.h"
#include "identity/secrets.h"
#include "system/memory.h"
#include "text.h"

namespace host {

namespace {

constexpr unsigned kGood = 200;
constexpr unsigned kNotModified = 304;
constexpr char kTag[] = "ETag";
constexpr std::size_t kTagDigits = 32;  // 128 bits: nobody finds two answers with the same ones
constexpr std::chrono::milliseconds kRetryTime{100};

MadeAnswer madeOf(Answer answer, const ovra::PluginPosition& position = {}) {
  return {std::make_shared<const Answer>(std::move(answer)), position};
}

MadeAnswer turnedAway() {
  MadeAnswer made =
      madeOf(failureAnswer(Refusal(503, "Too many requests wait to be served", {{"Retry-After", "1"}})));
  made.isTurnedAway = true;
  return made;
}

std::string tagOf(const std::string& bytes) { return '"' + sha256Hex(bytes).substr(0, kTagDigits) + '"'; }

const std::string& tagIn(const Answer& answer) {
  static const std::string kNone;
  const auto found = std::find_if(answer.headers.begin(), answer.headers.end(),
                                  [](const auto& field) { return field.first == kTag; });
  return found == answer.headers.end() ? kNone : found->second;
}

void stamp(Answer& answer) {
  answer.headers.emplace_back(kTag, tagOf(answer.body.text()));
  answer.headers.emplace_back("Vary", "Accept-Encoding");
}

/// The packed form of a stamped answer.
Answer packed(const Answer& plain) {
  Answer answer = plain;
  answer.rendered.clear();
  answer.body = gzip(plain.body.text());
  for (auto& [name, value] : answer.headers) {
    if (name == kTag) value = tagOf(answer.body.text());
  }
  answer.headers.emplace_back("Content-Encoding", "gzip");
  return answer;
}

/// Tells what the whole answer would have told beside its bytes and their form.
Answer notModified(const Answer& whole) {
  Answer answer{kNotModified, {}, {}, whole.headers};
  auto& headers = answer.headers;
  headers.erase(std::remove_if(headers.begin(), headers.end(),
                               [](const auto& field) { return field.first == "Content-Encoding"; }),
                headers.end());
  return answer;
}

std::shared_ptr<const Answer> unchangedOf(const MadeAnswer& made) {
  return made.unchanged ? made.unchanged : std::make_shared<const Answer>(notModified(*made.answer));
}

}  // namespace

PluginRead::PluginRead(const ReadRules& rules, std::shared_ptr<const Call> call, std::string body)
    : m_rules(rules), m_call(std::move(call)), m_body(std::move(body)) {}

void PluginRead::begin(const Sender& exchange) {
  const AnswerWishes& wishes = m_call->wishes;
  const auto coding = codingFor(wishes.acceptEncoding);
  if (!coding) return refuse(exchange, Refusal(406, "Answers are plain or packed by gzip"));
  m_coding = *coding;
  m_question = question(m_coding);
  const bool isAwaitable = isShared() && wishes.ifNoneMatch && !namesAnyTag(*wishes.ifNoneMatch);
  if (isAwaitable) m_wait = waitIn(wishes.prefer);
  if (m_wait) m_deadline = Clock::now() + *m_wait;
  look(exchange);
}

void PluginRead::look(const Sender& exchange) {
  if (!isShared()) return makeAlone(exchange);
  KeptAnswers& store = m_rules.revisions->kept;
  const ovra::PluginPosition now = m_rules.revisions->plugin.position();
  if (const auto kept = store.look(m_question, now)) {
    count(m_rules.revisions->hits);
    return conclude(exchange, *kept);
  }
  const auto onMade = [self = shared_from_this(), exchange](const MadeAnswer& made) {
    exchange->post([self, exchange, made] { self->conclude(exchange, made); });
  };
  const KeptAnswers::Found found = store.find(m_question, now, onMade);
  count(found.isMaker ? m_rules.revisions->misses : m_rules.revisions->hits);
  if (found.kept) return conclude(exchange, *found.kept);
  if (!found.isMaker) return;
  const auto task = [self = shared_from_this(), &store, now] {
    store.made(self->m_question, now, self->make());
  };
  if (!exchange->work(Lane::kReads, task)) store.made(m_question, now, turnedAway());
}

void PluginRead::count(std::atomic<std::uint64_t>& counter) const {
  if (!m_rules.isMomentary) counter.fetch_add(1, std::memory_order_relaxed);
}

/// Nobody else would be answered alike, or nobody can tell for how long.
void PluginRead::makeAlone(const Sender& exchange) {
  const auto task = [self = shared_from_this(), exchange] {
    exchange->post([self, exchange, made = self->make()] { self->conclude(exchange, made); });
  };
  if (!exchange->work(Lane::kReads, task)) conclude(exchange, turnedAway());
}

/// Nothing may leave a worker's task.
MadeAnswer PluginRead::make() const {
  try {
    MadeAnswer made = makeForm();
    if (made.answer->body.size() >= kLargeBytes) giveMemoryBack();
    return made;
  } catch (const std::exception& failure) {
    return madeOf(failureAnswer(failure));
  } catch (...) {
    return madeOf(failureAnswer(std::runtime_error("The plug-in failed without a reason")));
  }
}

MadeAnswer PluginRead::makeForm() const {
  const MadeAnswer plain = makePlain();
  if (m_coding == ContentCoding::kPlain || plain.answer->status != kGood) return plain;
  MadeAnswer made = plain;
  const bool isWorthIt = m_coding == ContentCoding::kGzipAll || plain.answer->body.size() >= kGzipFrom;
  if (isWorthIt) made.answer = std::make_shared<const Answer>(packed(*plain.answer));
  keep(made, m_coding);
  return made;
}

MadeAnswer PluginRead::makePlain() const {
  Revisions* const revisions = m_rules.revisions;
  const ovra::PluginPosition before = revisions ? revisions->plugin.position() : ovra::PluginPosition();
  if (isShared() && m_coding != ContentCoding::kPlain) {
    if (const auto kept = revisions->kept.look(question(ContentCoding::kPlain), before)) return *kept;
  }
  Answer answer = m_rules.ask(*m_call, m_body);
  if (answer.status == kGood) stamp(answer);
  const MadeAnswer made = madeOf(std::move(answer), before);
  keep(made, ContentCoding::kPlain);
  return made;
}

/// Where the revision did not stay, nobody knows of which one the answer is.
void PluginRead::keep(const MadeAnswer& made, ContentCoding coding) const {
  if (!isShared() || m_rules.isMomentary || made.answer->status != kGood) return;
  Revisions& revisions = *m_rules.revisions;
  if (revisions.plugin.position().revision != made.position.revision) return;
  MadeAnswer kept = made;
  kept.answer = std::make_shared<const Answer>(rendered(*made.answer));
  kept.unchanged = std::make_shared<const Answer>(rendered(notModified(*made.answer)));
  revisions.kept.keep(question(coding), kept);
}

/// What a client may write in several ways is written in one here. No segment is empty or holds a slash, and
/// no name holds a NUL character.
std::string PluginRead::question(ContentCoding coding) const {
  std::string text = std::to_string(static_cast<int>(coding));
  for (const std::wstring& segment : m_call->target.segments) text.append(1, '/').append(wideToUtf8(segment));
  text += "//";
  for (const auto& [name, value] : m_call->target.parameters) {
    const std::string bytes = wideToUtf8(value);
    text += wideToUtf8(name) + '\0' + std::to_string(bytes.size()) + ':' + bytes;
  }
  return text;
}

void PluginRead::conclude(const Sender& exchange, const MadeAnswer& made) {
  if (m_isAnswered) return;
  if (made.isTurnedAway && mayWait(*exchange)) return tryLater(exchange, made);
  if (made.answer->status == kGood) return concludeGood(exchange, made);
  answer(exchange, made.answer);
}

/// Whoever names the answer knows it already (RFC 9110, 13.2.2).
void PluginRead::concludeGood(const Sender& exchange, const MadeAnswer& made) {
  const AnswerWishes& wishes = m_call->wishes;
  const std::string& tag = tagIn(*made.answer);
  if (wishes.ifMatch && !namesTag(*wishes.ifMatch, tag, TagComparison::kStrong)) {
    return refuse(exchange, Refusal(412, "The answer is another than If-Match names"));
  }
  const bool isKnown = wishes.ifNoneMatch && namesTag(*wishes.ifNoneMatch, tag, TagComparison::kWeak);
  if (isKnown && mayWait(*exchange)) return await(exchange, made);
  if (!m_wait) return answer(exchange, isKnown ? unchangedOf(made) : made.answer);
  Answer last = isKnown ? *unchangedOf(made) : *made.answer;
  last.rendered.clear();
  last.headers.emplace_back("Preference-Applied", "wait=" + std::to_string(m_wait->count()));
  answer(exchange, std::make_shared<const Answer>(std::move(last)));
}

bool PluginRead::mayWait(const Exchange& exchange) const {
  return m_wait && !exchange.isStopping() && timeLeft().count() > 0;
}

std::chrono::milliseconds PluginRead::timeLeft() const {
  return std::chrono::ceil<std::chrono::milliseconds>(m_deadline - Clock::now());
}

void PluginRead::await(const Sender& exchange, const MadeAnswer& made) {
  if (!m_place) m_place = m_rules.revisions->watch.takePlace();
  if (!m_place) {
    return refuse(exchange, Refusal(503, "Too many wait for a change", {{"Retry-After", "2"}}));
  }
  // The exchange holds the step, and the watch nothing: a client that leaves takes all of it along.
  const std::weak_ptr<Exchange> sender = exchange;
  exchange->park(timeLeft(), [self = shared_from_this(), sender, made] {
    if (const auto open = sender.lock()) self->conclude(open, made);
  });
  m_place->await(made.position, m_rules.isMomentary, [read = weak_from_this(), sender] {
    const auto open = sender.lock();
    if (!open) return;
    open->post([read, open] {
      const auto self = read.lock();
      if (self && !self->m_isAnswered) self->look(open);
    });
  });
}

/// Many are woken by one change, and wait for their turn.
void PluginRead::tryLater(const Sender& exchange, const MadeAnswer& made) {
  const std::weak_ptr<Exchange> sender = exchange;
  exchange->park(std::min(timeLeft(), kRetryTime), [self = shared_from_this(), sender, made] {
    const auto open = sender.lock();
    if (!open) return;
    self->mayWait(*open) ? self->look(open) : self->conclude(open, made);
  });
}

void PluginRead::refuse(const Sender& exchange, const Refusal& refusal) {
  answer(exchange, std::make_shared<const Answer>(failureAnswer(refusal)));
}

void PluginRead::answer(const Sender& exchange, std::shared_ptr<const Answer> answer) {
  if (std::exchange(m_isAnswered, true)) return;
  m_place.reset();
  exchange->answer(std::move(answer));
}

}  // namespace host
