#ifndef MIRN_TESTS_SUPPORT_NEW_EVENTS_H
#define MIRN_TESTS_SUPPORT_NEW_EVENTS_H

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "event_journal.h"
#include "text.h"

/// What the journal of the process was given since this object was made, or since the last `take`.
class NewEvents {
 public:
  NewEvents() { take(); }

  /// In the order of recording, such as `VOLUME_ADDED INFO Data` or `DISK_FAILED ERROR SN21`.
  std::vector<std::string> take() {
    const auto all = EventJournal::instance().getRecent(std::numeric_limits<std::uint64_t>::max());
    const auto known = std::find(all.begin(), all.end(), m_newest);
    std::vector<std::string> texts;
    std::transform(all.begin(), known, std::back_inserter(texts), textOf);
    std::reverse(texts.begin(), texts.end());
    if (!all.empty()) m_newest = all.front();
    return texts;
  }

 private:
  static std::string textOf(const EventJournal::Event& event) {
    return wideToUtf8(event->getTypeName() + L" " + toText(event->severity()) + L" " + nameOf(*event));
  }

  static std::wstring nameOf(const mirn_events::base_event& event) {
    if (const auto* ofVolume = dynamic_cast<const mirn_events::volume_event*>(&event)) {
      return ofVolume->volume().name();
    }
    return dynamic_cast<const mirn_events::disk_event&>(event).device().serialNumber();
  }

  EventJournal::Event m_newest;
};

#endif
