#ifndef MIRN_TESTS_SIMULATOR_REFERENCE_MACHINE_H
#define MIRN_TESTS_SIMULATOR_REFERENCE_MACHINE_H

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "VEXL2.h"

/// A second machine, written from the manual and sharing no code with the library, that a walk holds against
/// it. Plain and slow: every consequence is drawn anew from the contents of the disks.
namespace reference {

using Handle = VEX_HANDLE;
using Status = VEX_STATUS;

constexpr std::uint64_t kMiB = 1 << 20;
constexpr std::uint64_t kTwoTb = std::uint64_t{1} << 41;

struct LevelRow {
  std::uint32_t level;
  std::uint32_t minDisks;
  std::uint32_t maxDisks;
  std::uint32_t strips;   ///< bits
  std::uint32_t targets;  ///< bits of levels
  std::uint32_t needsDisk;
  bool even = true;
  bool odd = true;
};

struct Engine {
  std::string id;
  std::uint32_t maxDisksPerArray;
  std::uint32_t maxRaidDisks;
  std::uint32_t maxVolumesPerArray;
  std::uint32_t maxVolumesPerController;
  bool globalSpares;
  bool dedicatedSpares;
  bool fromExisting;
  bool emptyArrays;
  bool ordanOnly;
  std::uint32_t policies;  ///< bit n: the write-hole policy with the code n
  std::vector<LevelRow> levels;
  Handle handle = 0;
};

struct Controller {
  std::string id;
  const Engine* engine;  ///< null: no RAID
  bool twoTbVolumes;
  bool twoTbDisks;
  bool rebuildsOnInsert = false;
  bool readPatrol = false;
  Handle handle = 0;
};

enum class Place { IN, OUT, UNNOTICED };

struct Disk {
  std::string id;
  Controller* controller = nullptr;
  std::uint64_t size = 0;
  std::uint64_t sector = 512;
  std::uint64_t physicalSector = 512;
  bool isX8 = false;
  bool isOrdan = false;
  bool hasHotPlug = true;
  std::string password;
  std::uint32_t condition = VEX_DISK_STATE_NORMAL;  ///< normal, or kept from the beginning
  Place place = Place::IN;
  bool failed = false;
  bool locked = false;
  bool smart = false;
  bool spare = false;
  Handle spareFor = 0;
  bool foreign = false;  ///< metadata of an array that goes on without it
  bool system = false;
  bool wanted = false;  ///< put in for an array that is at work
  std::uint32_t wrongPasswords = 0;
  std::uint32_t cache = 0;
  std::uint32_t pool = 0;
  Handle array = 0;
  int bay = 0;
  Handle handle = 0;
};

/// What one member has of one volume.
enum class Content { CURRENT, OLD, BLANK };

struct Part {
  Content content = Content::CURRENT;
  std::uint64_t since = 0;  ///< orders the parts that went out of date
};

enum class Task { REBUILD, INITIALIZE, VERIFY, REPAIR, MIGRATE };

struct Work {
  Task task = Task::VERIFY;
  std::uint64_t done = 0;  ///< milliseconds as if alone
  std::uint64_t total = 1;
  std::uint64_t rest = 0;  ///< of time shared with others
  Handle onto = 0;
  std::uint32_t sourceLevel = 0;
  std::vector<Handle> source;
  std::uint64_t targetSize = 0;
  std::vector<Handle> catchesUp;
  bool rewrites = true;
};

struct Volume {
  std::string name;
  Handle array = 0;
  std::uint32_t ordinal = 0;
  std::uint32_t level = 0;
  std::uint32_t strip = 0;
  std::uint64_t size = 0;
  std::map<Handle, Part> parts;  ///< of members; one that is not named is current
  std::uint32_t cache = VEX_CACHE_POLICY_OFF;
  std::uint32_t policy = 0;
  Handle journal = 0;
  bool system = false;
  bool initialized = true;
  std::uint32_t errors = 0;
  std::uint32_t badBlocks = 0;
  std::uint32_t latentErrors = 0;
  std::uint32_t latentBadBlocks = 0;
  std::optional<Work> work;
  Handle handle = 0;
};

struct Array {
  std::string name;
  std::vector<Handle> disks;
  std::uint32_t cache = VEX_WRITE_CACHE_OFF;
  Controller* controller = nullptr;
  Handle handle = 0;
};

/// A volume to be.
struct Wish {
  std::string name;
  std::uint32_t level = 0;
  std::uint32_t strip = 0;
  std::uint64_t sizeMiB = 0;
  std::uint32_t policy = 0;
  Handle journal = 0;
};

/// Handles that the library gave to what an action made; 0 where it made nothing.
struct Born {
  Handle array = 0;
  Handle volume = 0;
};

class Machine {
 public:
  std::vector<Engine> engines;
  std::vector<Controller> controllers;
  std::map<Handle, Disk> disks;
  std::map<Handle, Array> arrays;
  std::map<Handle, Volume> volumes;
  std::uint64_t rate = 1;  ///< mebibytes of a disk in a second, for all work

  /// Whether anything has changed since the last call.
  bool takeChanged();

  // What befalls devices.
  Status fail(Handle disk);
  Status pull(Handle disk);
  Status insert(Handle disk);
  Status insertBlank(Handle former, std::uint64_t size, std::uint64_t sector, Handle born,
                     const std::string& id);
  Status lock(Handle disk);
  Status raiseSmart(Handle disk);
  void pass(std::uint64_t milliseconds);

  // Actions, each with the status of its refusal.
  Status rescan();
  Status setReadPatrol(Handle controller, std::uint32_t on);
  Status setRohi(Handle controller, std::uint32_t on);
  Status clear(Handle disk);
  Status markDiskNormal(Handle disk);
  Status markSpare(Handle disk, Handle array);
  Status unmarkSpare(Handle disk);
  Status assignPool(Handle disk, std::uint32_t pool);
  Status unlock(Handle disk, const std::string& password);
  Status resetSmart(Handle disk);
  Status removeAtPhy(Handle disk, std::uint32_t one);
  Status setCache(Handle array, std::uint32_t on);
  Status addDisks(Handle array, const std::vector<Handle>& added);
  Status create(Handle array, const Wish& wish, Born born);
  Status createFromDisks(const std::vector<Handle>& members, Handle source, const Wish& wish, Born born);
  Status remove(Handle volume);
  Status rebuild(Handle volume, Handle disk);
  Status initialize(Handle volume);
  Status verify(Handle volume, std::uint32_t repair);
  Status cancelVerify(Handle volume);
  Status markVolumeNormal(Handle volume);
  Status rename(Handle volume, const std::string& name);
  Status setPolicy(Handle volume, std::uint32_t policy);
  Status setRwh(Handle volume, Handle drive, std::uint32_t policy);
  Status expand(Handle volume, std::uint64_t sizeMiB);
  Status modify(Handle volume, std::uint32_t level, std::uint32_t strip, std::uint64_t sizeMiB,
                const std::vector<Handle>& added);

  // What records show.
  std::uint32_t stateOf(const Disk& disk) const;
  std::uint32_t usageOf(const Disk& disk) const;
  bool isListed(const Disk& disk) const;
  std::uint64_t freeOf(const Disk& disk) const;
  std::uint32_t stateOf(const Volume& volume) const;
  std::uint64_t freeOfEach(const Array& array) const;
  std::uint64_t memberSize(const Array& array) const;
  bool isBusy(const Array& array) const;
  std::uint32_t progressOf(const Volume& volume) const;
  std::uint32_t errorsOf(const Volume& volume) const;
  std::uint32_t badBlocksOf(const Volume& volume) const;
  std::vector<const Volume*> volumesOn(const Array& array) const;
  bool isUsable(Handle disk) const;
  bool isFree(const Disk& disk) const;
  std::uint32_t journalsOn(Handle disk) const;

 private:
  std::vector<Volume*> volumesOn(const Array& array);
  std::uint64_t usedOfEach(const Array& array) const;
  std::uint64_t footprint(const Volume& volume) const;
  bool serves(const Volume& volume) const;
  bool isRunning(const Volume& volume) const;
  std::uint64_t runningOn(const Array& array) const;
  bool isReduced(const Volume& volume) const;
  bool isMigrating(const Volume& volume) const;
  bool waits(const Volume& volume) const;
  bool arrivesSafely(const Volume& volume, const std::vector<Handle>& caughtUp) const;
  bool maySomedayServe(const Disk& disk) const;
  bool isLostForGood(const Disk& disk) const;
  Status judgeDrive(const Controller& controller, const Disk& disk, bool isRaid0Only) const;
  Status judge(const Disk& disk, const Controller& controller, std::uint64_t sector, std::uint64_t least,
               bool isRaid0Only, Handle source) const;
  std::size_t raidDisks(const Engine& engine) const;
  Status judgeRoom(const Engine& engine, const std::vector<Handle>& added) const;
  Status judgeDisks(const std::vector<Handle>& named) const;
  Status judgeRwh(const Engine& engine, std::uint32_t level, std::uint32_t policy, Handle drive,
                  const std::vector<Handle>& members, Handle kept) const;
  Status judgeJournal(const Disk& drive, const Disk& member, Handle kept) const;
  Status judgeName(const std::string& name, Handle self) const;
  Status judgeWish(const Controller& controller, const Wish& wish, const LevelRow*& level) const;
  Status judgeSize(const Controller& controller, std::uint32_t level, std::size_t count,
                   std::uint64_t sizeMiB, std::uint64_t room, std::uint64_t& size) const;
  std::size_t volumesOf(const Controller& controller) const;
  bool holdsUpSystem(const Disk& disk) const;

  Volume& make(const Array& array, const Wish& wish, std::uint64_t size, const LevelRow& level,
               Handle handle);
  void migrate(Volume& volume, std::uint32_t sourceLevel, const std::vector<Handle>& source,
               std::uint64_t targetSize, bool rewrites);
  void begin(Volume& volume, Work work);
  void stop(Volume& volume);
  void join(Array& array, Disk& disk);
  void dissolve(Handle array);
  void release(Disk& disk) const;
  void replace(Array& array, Disk& lost, Disk& replacement);
  void noticed(Disk& disk);
  void takeAsNormal(Disk& disk) const;
  Status changedIf(bool isChange);

  void settle();
  void settle(Volume& volume);
  void settleMigration(Volume& volume);
  void rebuildOntoReturned(Volume& volume);
  bool replaceLost(Array& array);
  Disk* chooseReplacement(const Array& array);
  bool isWanted(const Disk& disk) const;
  bool finishDue();
  std::optional<std::uint64_t> nextEnd() const;
  void count(std::uint64_t milliseconds);

  bool m_changed = false;
  std::uint64_t m_moment = 0;  ///< counts what goes out of date
};

/// The row of the level, or null.
const LevelRow* rowOf(const Engine& engine, std::uint32_t level);

/// Whether the level takes so many disks.
bool takes(const LevelRow& row, std::size_t count);

/// What volumes may take of the disk.
std::uint64_t usableSize(const Disk& disk);

/// How many of so many disks hold data.
std::uint64_t dataDisks(std::uint32_t level, std::size_t count);

}  // namespace reference

#endif
