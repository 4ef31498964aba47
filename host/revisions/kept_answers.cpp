#include "revisions/kept_answers.h"

#include <utility>

#include "text.h"

namespace host {

namespace {

/// Beside its bytes: what an entry, its places in the containers and its header fields take, roughly.
constexpr std::size_t kEntryBytes = 1024;

bool isOf(const MadeAnswer& answer, const ovra::PluginPosition& now) {
  return answer.position.revision == now.revision && answer.position.epoch == now.epoch;
}

/// Events count, since not every answer is one of its revision alone.
std::string awaitedKey(const std::string& question, const ovra::PluginPosition& now) {
  return std::to_string(now.revision) + ' ' + std::to_string(now.sequence) + ' ' + question;
}

}  // namespace

KeptAnswers::Found KeptAnswers::find(const std::string& question, const ovra::PluginPosition& now,
                                     OnMade onMade) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  if (auto kept = lookLocked(question, now)) return {std::move(kept)};
  auto& waiting = m_awaited[awaitedKey(question, now)];
  waiting.push_back(std::move(onMade));
  return {nullptr, waiting.size() == 1};
}

void KeptAnswers::made(const std::string& question, const ovra::PluginPosition& now,
                       const MadeAnswer& answer) {
  std::vector<OnMade> waiting;
  {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = m_awaited.find(awaitedKey(question, now));
    if (found == m_awaited.end()) return;
    waiting = std::move(found->second);
    m_awaited.erase(found);
  }
  for (const OnMade& onMade : waiting) onMade(answer);
}

std::shared_ptr<const MadeAnswer> KeptAnswers::look(const std::string& question,
                                                    const ovra::PluginPosition& now) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return lookLocked(question, now);
}

void KeptAnswers::keep(const std::string& question, const MadeAnswer& answer) {
  const std::size_t bytes = kEntryBytes + 2 * question.size() + answer.answer->body.size();
  auto kept = std::make_shared<const MadeAnswer>(answer);
  const std::lock_guard<std::mutex> lock(m_mutex);
  const auto found = m_places.find(question);
  if (found != m_places.end()) {
    if (found->second->answer->position.revision > answer.position.revision) return;
    remove(found->second);
  }
  if (bytes > m_most) return;
  while (m_bytes + bytes > m_most) remove(std::prev(m_entries.end()));
  m_entries.push_front({question, std::move(kept), bytes});
  m_places.emplace(question, m_entries.begin());
  m_bytes += bytes;
}

std::size_t KeptAnswers::bytes() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  return m_bytes;
}

/// Under the lock.
std::shared_ptr<const MadeAnswer> KeptAnswers::lookLocked(const std::string& question,
                                                          const ovra::PluginPosition& now) {
  const auto found = m_places.find(question);
  if (found == m_places.end() || !isOf(*found->second->answer, now)) return {};
  m_entries.splice(m_entries.begin(), m_entries, found->second);
  return found->second->answer;
}

void KeptAnswers::remove(Entries::iterator entry) {
  m_bytes -= entry->bytes;
  m_places.erase(entry->question);
  m_entries.erase(entry);
}

}  // namespace host
