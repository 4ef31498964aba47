#include "simulator/refusal_rows.h"

std::vector<RefusalRow> arrayRefusals() {
  using W = const Workbench&;
  const auto adding = [](
                          VEX_STATUS status, const char* condition, const char* array,
                          std::vector<const char*> disks, RefusalRow::Arrange arrange = [](W) {}) {
    return RefusalRow{"VexAddDisksToArray", status, condition,
                      [=](W w) {
                        std::vector<VEX_HANDLE> handles;
                        for (const char* const id : disks) handles.push_back(w.diskHandle(id));
                        return addDisks(w.arrayHandle(array), handles);
                      },
                      std::move(arrange)};
  };
  return {
      {"VexArraySetWriteCacheState", 3, "NoArray", [](W) { return VexArraySetWriteCacheState(kNothing, 1); }},
      {"VexArraySetWriteCacheState", 2, "NoSwitch",
       [](W w) { return VexArraySetWriteCacheState(w.arrayHandle("five"), 2); }},
      {"VexArraySetWriteCacheState", 18, "MemberLost",
       [](W w) { return VexArraySetWriteCacheState(w.arrayHandle("five"), 1); }, pulled("a2")},
      {"VexAddDisksToArray", 2, "NotZero",
       [](W w) {
         const VEX_HANDLE disk = w.diskHandle("a7");
         return VexAddDisksToArray(w.arrayHandle("five"), &disk, 1, 1);
       }},
      {"VexAddDisksToArray", 2, "NoList",
       [](W w) { return VexAddDisksToArray(w.arrayHandle("five"), nullptr, 1, 0); }},
      {"VexAddDisksToArray", 3, "NoArray", [](W w) { return addDisks(kNothing, w.diskHandles({"a7"})); }},
      {"VexAddDisksToArray", 3, "NoDevice", [](W w) { return addDisks(w.arrayHandle("five"), {kNothing}); }},
      adding(14, "ControllerWithout", "plain", {"b3"}),
      adding(13, "NoDisks", "five", {}),
      adding(43, "NoDisk", "five", {"optical"}),
      adding(43, "DiskTwice", "five", {"a7", "a7"}),
      adding(16, "Degraded", "five", {"a7"}, pulled("a2")),
      adding(16, "AtWork", "five", {"a7"}, [](W w) { done(VexVolumeVerify(w.volumeHandle("five"), 0)); }),
      adding(24, "TooManyForTheArray", "stripe", {"a7", "a8", "a9", "large", "journal"}),
      adding(24, "TooManyForTheEngine", "five", {"a7", "a8"},
             [](W w) {
               for (const char* const id : {"a9", "large", "journal", "sectors"}) {
                 done(VexDiskMarkAsSpare(w.diskHandle(id), 0));
               }
             }),
      adding(31, "TooManyForTheLevel", "mirror", {"a7"}),
      adding(38, "OtherController", "five", {"c0"}),
      adding(29, "X8", "five", {"x8"}),
      adding(29, "Unsupported", "five", {"odd"}),
      adding(29, "DiskOver2Tb", "tiny", {"d6"}),
      adding(35, "ForeignDrive", "tiny", {"d3"}),
      adding(34, "OtherSectors", "five", {"sectors"}),
      adding(18, "MemberOfAnother", "five", {"a0"}),
      adding(18, "SystemDisk", "five", {"system"}),
      adding(37, "TooSmall", "five", {"small"}),
  };
}
