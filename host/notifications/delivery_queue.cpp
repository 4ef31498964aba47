#include "notifications/delivery_queue.h"

#include <algorithm>
#include <set>
#include <utility>

namespace host {

namespace {

/// Of each alarm the one that came first, ahead of which none of the others is tried.
template <class Waiting, class Take>
void forEachFirst(Waiting& waiting, const Take& take) {
  std::set<std::string> alarms;
  for (auto& each : waiting) {
    if (alarms.insert(each.delivery.alarm).second) take(each);
  }
}

}  // namespace

DeliveryQueue::DeliveryQueue(std::size_t targets, Settings settings)
    : m_settings(settings), m_targets(targets, Target{{}, {}, settings.firstPause}) {}

std::optional<DeliveryQueue::Loss> DeliveryQueue::add(std::size_t target, Delivery delivery, Moment now) {
  std::optional<Loss> loss;
  if (size() >= m_settings.most) loss = makePlace(target);
  m_targets.at(target).waiting.push_back({std::move(delivery), now, now, m_settings.firstPause});
  return loss;
}

/// What is under way stays: it may arrive yet.
std::optional<DeliveryQueue::Loss> DeliveryQueue::makePlace(std::size_t target) {
  std::size_t longest = target;
  for (std::size_t i = 0; i < m_targets.size(); ++i) {
    if (m_targets[i].waiting.size() > m_targets[longest].waiting.size()) longest = i;
  }
  std::deque<Waiting>& waiting = m_targets[longest].waiting;
  const auto oldest =
      std::find_if(waiting.begin(), waiting.end(), [](const Waiting& each) { return !each.isUnderWay; });
  if (oldest == waiting.end()) return {};
  Loss loss{longest, std::move(oldest->delivery)};
  waiting.erase(oldest);
  return loss;
}

std::vector<Delivery> DeliveryQueue::takeExpired(std::size_t target, Moment now) {
  std::deque<Waiting>& waiting = m_targets.at(target).waiting;
  std::vector<Delivery> expired;
  for (auto each = waiting.begin(); each != waiting.end();) {
    if (each->isUnderWay || now - each->since < m_settings.longestLife) {
      ++each;
      continue;
    }
    expired.push_back(std::move(each->delivery));
    each = waiting.erase(each);
  }
  return expired;
}

std::optional<Delivery> DeliveryQueue::begin(std::size_t index, Moment now) {
  Target& target = m_targets.at(index);
  if (now < target.due) return {};
  Waiting* first = nullptr;
  forEachFirst(target.waiting, [&](Waiting& each) {
    if (each.due <= now && (first == nullptr || each.due < first->due)) first = &each;
  });
  if (first == nullptr) return {};
  first->isUnderWay = true;
  return first->delivery;
}

void DeliveryQueue::finish(std::size_t index) {
  Target& target = m_targets.at(index);
  const auto done = underWay(target);
  if (done == target.waiting.end()) return;
  target.waiting.erase(done);
  target.pause = m_settings.firstPause;
  target.due = {};
}

void DeliveryQueue::fail(std::size_t index, Moment now) {
  Target& target = m_targets.at(index);
  const auto failed = underWay(target);
  if (failed == target.waiting.end()) return;
  failed->isUnderWay = false;
  failed->due = now + std::exchange(failed->pause, doubled(failed->pause));
  target.due = now + std::exchange(target.pause, doubled(target.pause));
}

void DeliveryQueue::breakOff(std::size_t index) {
  Target& target = m_targets.at(index);
  const auto broken = underWay(target);
  if (broken != target.waiting.end()) broken->isUnderWay = false;
}

std::optional<DeliveryQueue::Moment> DeliveryQueue::nextTurn(std::size_t index) const {
  const Target& target = m_targets.at(index);
  if (target.waiting.empty()) return {};
  Moment next = target.waiting.front().since + m_settings.longestLife;
  forEachFirst(target.waiting,
               [&](const Waiting& each) { next = std::min(next, std::max(each.due, target.due)); });
  return next;
}

std::vector<Delivery> DeliveryQueue::takeAll(std::size_t index) {
  std::vector<Delivery> all;
  for (Waiting& each : std::exchange(m_targets.at(index).waiting, {}))
    all.push_back(std::move(each.delivery));
  return all;
}

std::size_t DeliveryQueue::size() const {
  std::size_t count = 0;
  for (const Target& target : m_targets) count += target.waiting.size();
  return count;
}

std::deque<DeliveryQueue::Waiting>::iterator DeliveryQueue::underWay(Target& target) const {
  return std::find_if(target.waiting.begin(), target.waiting.end(),
                      [](const Waiting& each) { return each.isUnderWay; });
}

DeliveryQueue::Duration DeliveryQueue::doubled(Duration pause) const {
  return std::min(2 * pause, m_settings.longestPause);
}

}  // namespace host
