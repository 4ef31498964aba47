#ifndef MIRN_EVENTS_EVENT_COMPARISON_H
#define MIRN_EVENTS_EVENT_COMPARISON_H

#include <vector>

#include "enddevice.h"
#include "event_journal.h"
#include "volume.h"

/// Record in the journal what differs between two pictures: what is gone first, then what is new or has
/// changed, each in the order of its list. Objects are matched by id; where an id stands twice, its first
/// object counts. Only the state of an object is compared. Nothing of the lists is kept but copies.

void compareVolumes(const std::vector<Volume>& oldVolumes, const std::vector<Volume>& newVolumes,
                    EventJournal& journal);

void compareEndDevices(const std::vector<EndDevice>& oldDevices, const std::vector<EndDevice>& newDevices,
                       EventJournal& journal);

#endif
