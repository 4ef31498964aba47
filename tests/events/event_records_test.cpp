#include "event_records.h"

#include <gtest/gtest.h>

#include <memory>

#include "event_journal.h"
#include "events/sample_objects.h"
#include "support/time_zone.h"
#include "support/virtual_slot.h"

namespace {

using mirn_events::base_event;
using mirn_events::disk_event;
using mirn_events::volume_event;
using ovra::data_transfer::ServiceObject;

/// Every member of a form, one a line.
std::wstring written(const ServiceObject& object) {
  std::wstring lines;
  for (const auto& member : object) lines += member.key + L" = " + member.value->toString() + L"\n";
  return lines;
}

std::wstring member(const base_event& event, const wchar_t* key) {
  return event.toServiceObject().member(key).toString();
}

TEST(DiskEvent, IsPublishedWithTypeSerialNumberAndAddress) {
  const TimeZone zone("UTC");
  const disk_event event(EventSeverity::WARNING, DiskEventType::DISK_SMART, sampleDevice({L"1"}));
  EXPECT_EQ(written(event.toServiceObject()),
            L"creation_time = 01/01/70 12:00:00 AM\n"
            L"description = SATA SN1 at 0-1-2-3 reported SMART event\n"
            L"event_source = DISK\n"
            L"event_source_name = SATA SN1\n"
            L"event_type = DISK_SMART\n"
            L"severity = WARNING\n");
}

TEST(DiskEvent, OfADiskWithoutSerialNumberIsNamedByTypeAndOneBlank) {
  SampleDevice sample{L"1"};
  sample.type = DiskType::NVME;
  sample.serialNumber.clear();
  const disk_event event(EventSeverity::INFO, DiskEventType::DISK_ADDED, sampleDevice(sample));
  EXPECT_EQ(member(event, L"event_source_name"), L"NVME ");
  EXPECT_EQ(member(event, L"description"), L"NVME  at 0-1-2-3 was added");
}

TEST(DiskEvent, OfAnUnknownTypeReadsAsType0) {
  const disk_event event(EventSeverity::INFO, static_cast<DiskEventType>(7), sampleDevice({L"1"}));
  EXPECT_EQ(event.getTypeName(), L"DISK_UNKNOWN");
  EXPECT_EQ(event.getDescription(), L"has unknown state");
}

TEST(VolumeEvent, IsPublishedWithTheNameOfTheVolume) {
  const TimeZone zone("UTC");
  const volume_event event(EventSeverity::ERROR, VolumeEventType::VOLUME_MASTER_DISK_FAILED,
                           sampleVolume(L"1"));
  EXPECT_EQ(written(event.toServiceObject()),
            L"creation_time = 01/01/70 12:00:00 AM\n"
            L"description = Data - master disk failed\n"
            L"event_source = VOLUME\n"
            L"event_source_name = Data\n"
            L"event_type = VOLUME_MASTER_DISK_FAILED\n"
            L"severity = ERROR\n");
}

TEST(VolumeEvent, TakesANameAsItStands) {
  const volume_event event(EventSeverity::INFO, VolumeEventType::VOLUME_ADDED,
                           sampleVolume(L"1", VolumeState::NORMAL, L"100 %1% %"));
  EXPECT_EQ(member(event, L"description"), L"100 %1% % was added");
}

TEST(VolumeEvent, OfADeletedVolumeStillHasItsName) {
  auto volume = std::make_unique<Volume>(sampleVolume(L"1", VolumeState::FAILED, L"Gone"));
  const volume_event event(EventSeverity::INFO, VolumeEventType::VOLUME_DELETED, *volume);
  volume.reset();
  EXPECT_EQ(member(event, L"event_source_name"), L"Gone");
  EXPECT_EQ(member(event, L"description"), L"Gone was deleted");
}

TEST(VolumeEvent, OfAnUnknownTypeReadsAsType0) {
  const volume_event event(EventSeverity::INFO, static_cast<VolumeEventType>(26), sampleVolume(L"1"));
  EXPECT_EQ(event.getTypeName(), L"VOLUME_UNKNOWN");
  EXPECT_EQ(event.getDescription(), L"has unknown state");
}

TEST(BaseEvent, OfAnUnknownSeverityIsUndefined) {
  const volume_event event(static_cast<EventSeverity>(4), VolumeEventType::VOLUME_ADDED, sampleVolume(L"1"));
  EXPECT_EQ(member(event, L"severity"), L"UNDEFINED");
}

TEST(BaseEvent, IsOfTheEpochUntilItIsRecorded) {
  const TimeZone zone("XXX-1");
  const auto event =
      std::make_shared<volume_event>(EventSeverity::INFO, VolumeEventType::VOLUME_ADDED, sampleVolume(L"1"));
  EXPECT_EQ(event->creationTime(), 0);
  EXPECT_EQ(member(*event, L"creation_time"), L"01/01/70 01:00:00 AM");

  EventJournal journal([] { return 3'600 * kTicksPerSecond + 5; });
  journal.add(event);
  EXPECT_EQ(event->creationTime(), 3'600 * kTicksPerSecond + 5);
  EXPECT_EQ(member(*event, L"creation_time"), L"01/01/70 02:00:00 AM");
}

TEST(BaseEvent, HasItsOperationsInOrderBehindTheDestructor) {
  EXPECT_TRUE(std::has_virtual_destructor<base_event>::value);
  EXPECT_EQ(virtualSlot(&base_event::toServiceObject), 2u);
  EXPECT_EQ(virtualSlot(&base_event::getTypeName), 3u);
  EXPECT_EQ(virtualSlot(&base_event::getDescription), 4u);
}

}  // namespace
