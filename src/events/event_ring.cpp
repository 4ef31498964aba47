#include "event_ring.h"

#include <algorithm>
#include <utility>

#include "list_form.h"
#include "published_form.h"

using ovra::data_transfer::ServiceObject;

void EventRing::add(EventSummary event, std::int64_t ticks) {
  event.stamp(m_newest + 1, ticks);
  m_events.push_back(std::make_shared<const EventSummary>(std::move(event)));
  if (m_events.size() > kSize) m_events.pop_front();
  ++m_newest;
}

ServiceObject EventRing::Part::toServiceObject() const {
  return PublishedForm()
      .number(L"oldest", oldest)
      .part(L"events", listOf(events, [](const auto& event) { return event->toServiceObject(); }))
      .take();
}

EventRing::Part EventRing::after(std::uint64_t sequence, std::uint64_t limit) const {
  Part part;
  if (m_events.empty()) return part;
  part.oldest = m_events.front()->number();
  const std::uint64_t known = std::clamp(sequence, part.oldest - 1, m_newest);
  const std::uint64_t count = std::min(limit, m_newest - known);
  const auto first = m_events.begin() + static_cast<std::ptrdiff_t>(known + 1 - part.oldest);
  part.events.assign(first, first + static_cast<std::ptrdiff_t>(count));
  return part;
}
