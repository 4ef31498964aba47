/* The declarations serve a caller in plain C: it fills records field by field and finds them at their bytes.
 */
#include "VEXL2.h"

#include <stdio.h>
#include <string.h>

static int failures = 0;

static void expect(int condition, const char* what) {
  if (!condition) {
    fprintf(stderr, "failed: %s\n", what);
    ++failures;
  }
}

static uint32_t dwordAt(const void* record, size_t offset) {
  uint32_t value = 0;
  memcpy(&value, (const char*)record + offset, sizeof value);
  return value;
}

static uint64_t qwordAt(const void* record, size_t offset) {
  uint64_t value = 0;
  memcpy(&value, (const char*)record + offset, sizeof value);
  return value;
}

static void diskIsFoundAtItsBytes(void) {
  VEX_END_DEVICE_INFO disk;
  memset(&disk, 0, sizeof disk);
  disk.endDeviceHandle = 17;
  strcpy(disk.serialNumber, "SN-0017");
  disk.totalSize = UINT64_C(0x0000010000000000);
  disk.isOrdanNVMe = 1;
  expect(dwordAt(&disk, 0) == 17, "handle at 0");
  expect(memcmp((const char*)&disk + 96, "SN-0017", 8) == 0, "serial number at 96");
  expect(qwordAt(&disk, 192) == UINT64_C(0x0000010000000000), "total size at 192");
  expect(dwordAt(&disk, 284) == 1, "last flag at 284");
}

static void volumeIsReadFromBytes(void) {
  unsigned char bytes[sizeof(VEX_VOLUME_INFO)];
  VEX_VOLUME_INFO volume;
  memset(bytes, 0, sizeof bytes);
  memcpy(bytes + 53, "Data", 5);
  bytes[76] = 8;
  bytes[140] = 21;
  memcpy(&volume, bytes, sizeof volume);
  expect(strcmp(volume.name, "Data") == 0, "name at 53");
  expect(volume.raidLevel == VEX_RAID_LEVEL_5, "RAID 5 at 76");
  expect(volume.journalingDriveHandle == 21, "journaling drive at 140");
}

static void parametersCarryTheCallersDisks(void) {
  const VEX_HANDLE disks[2] = {4, 5};
  const VEX_HANDLE* carried = NULL;
  VEX_CREATE_FROM_DISKS_PARAMS params;
  memset(&params, 0, sizeof params);
  params.disks = disks;
  params.diskCount = 2;
  params.raidLevel = VEX_RAID_LEVEL_10;
  memcpy(&carried, &params, sizeof carried);
  expect(carried == disks && carried[1] == 5, "disks at 0");
  expect(dwordAt(&params, 8) == 2, "count at 8");
  expect(dwordAt(&params, 40) == 4, "level at 40");
}

static void passwordMayBeFull(void) {
  VEX_UNLOCK_PARAMS params;
  memset(params.password, 'x', sizeof params.password);
  params.master = 1;
  expect(dwordAt(&params, 32) == 1, "a full password leaves the choice alone");
}

int main(void) {
  diskIsFoundAtItsBytes();
  volumeIsReadFromBytes();
  parametersCarryTheCallersDisks();
  passwordMayBeFull();
  return failures == 0 ? 0 : 1;
}
