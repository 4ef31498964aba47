#ifndef MIRN_SIMULATOR_VEXL2_SIMULATOR_H
#define MIRN_SIMULATOR_VEXL2_SIMULATOR_H

#include "VEXL2.h"

/// Controls of the simulated library, beside its fifty operations. Valid as C99 and as C++17.
///
/// - All return a `VEX_STATUS` and may be called from any thread. Faults ordered here do not reach them.
/// - A disk is named by the "id" or by the serial number of its scenario.
/// - Those that touch the machine need an initialised library, and answer 12 without.

/// Why the last scenario given to the controls was refused, in one line; empty when it was taken. Stores as
/// much as fits `size` bytes, with a NUL.
VEX_API VEX_STATUS VexSimLastError(char* text, uint32_t size);

/// Puts a machine in place of the present one: at once when the library is initialised, else with the next
/// `VexInitialize`, which then looks at neither VEXL2_SCENARIO nor the content of VEXL2_STATE. All handles
/// are those of the new machine; subscribers are told. 2 for a scenario that cannot be taken, or that
/// `VexSimCheck` would not hold for; 15 when it cannot be kept.
VEX_API VEX_STATUS VexSimLoadText(const char* json);
VEX_API VEX_STATUS VexSimLoadFile(const char* path);

/// Stores the machine as the text of a scenario. With `text` null or too small for text and NUL, stores the
/// size needed in `*size` and returns 13.
VEX_API VEX_STATUS VexSimSaveText(char* text, uint32_t* size);

/// The disk fails: it is there and serves nothing. 18 when it is not there or has failed already.
VEX_API VEX_STATUS VexSimFailDisk(const char* disk);

/// Somebody pulls the device out, or puts it back where it was. 18 when it is out, or in, already, or
/// when another disk is in its bay. Where no hot-plug is managed, a device put in is noticed at the
/// next `VexRescan`.
VEX_API VEX_STATUS VexSimPullDisk(const char* disk);
VEX_API VEX_STATUS VexSimInsertDisk(const char* disk);

/// A blank disk is put into the bay of `bay`, a disk that is out: 18 when a disk is in it. `totalSize` in
/// bytes and `sectorSize` may be 0, `model` null or empty, for those of that disk. Stores the new disk's id,
/// which is also its serial number, as much of it as fits `size` bytes with a NUL; `id` may be null. 37 for a
/// disk that is too small for any use, 34 for a sector size that is no power of two from 512 on, 2 for a
/// model of more than 40 bytes, 43 for a bay where no disk was.
VEX_API VEX_STATUS VexSimInsertBlankDisk(const char* bay, uint64_t totalSize, uint32_t sectorSize,
                                         const char* model, char* id, uint32_t size);

/// The disk locks itself. 18 unless it is there and serves.
VEX_API VEX_STATUS VexSimLockDisk(const char* disk);

/// The disk reports a SMART event. 18 unless it is there and normal.
VEX_API VEX_STATUS VexSimRaiseSmartEvent(const char* disk);

/// Moves the machine's time on by hand.
VEX_API VEX_STATUS VexSimAdvanceClock(uint64_t milliseconds);

/// Machine time in a unit of real time; 0 stops it, for those who move it by hand. Wins
/// over VEXL2_CLOCK_SPEED.
VEX_API VEX_STATUS VexSimSetClockSpeed(uint32_t speed);

/// No `VexEventWait` lasts longer than this from now on, also those that wait already.
VEX_API VEX_STATUS VexSimCapEventWait(uint32_t milliseconds);

/// `count` without end.
#define VEXSIM_ALWAYS UINT32_C(0xFFFFFFFF)

/// The operation, one of the fifty by its name, answers `status` and does nothing: on `count` of its calls,
/// after `skip` that go through. Orders for one operation are used up one after the other; one without end
/// lasts until the next. `count` 0 orders nothing. Needs no initialised library. 2 for a name that is none.
VEX_API VEX_STATUS VexSimFailCalls(const char* operation, uint32_t skip, uint32_t count, VEX_STATUS status);

/// The operation takes so many milliseconds more, counted likewise.
VEX_API VEX_STATUS VexSimDelayCalls(const char* operation, uint32_t skip, uint32_t count,
                                    uint32_t milliseconds);

/// Forgets all orders to fail or to delay.
VEX_API VEX_STATUS VexSimClearFaults(void);

/// How often the operation has been called since the library was loaded.
VEX_API VEX_STATUS VexSimCountCalls(const char* operation, uint64_t* calls);

/// Checks the machine against its own rules: 0 when they hold, otherwise 16 with the first that does not as
/// text. Also 16 when something that happened by itself could not be saved, with the reason. With 0 the text
/// tells of a volume that goes on without its journal, or is empty.
VEX_API VEX_STATUS VexSimCheck(char* text, uint32_t size);

#endif
