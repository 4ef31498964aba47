#include "engine/migration.h"

#include <algorithm>

#include "engine/work.h"
#include "model/disk_role.h"
#include "model/links.h"
#include "model/redundancy.h"

namespace simulator {
namespace {

bool isUsable(const Machine& machine, Handle disk) { return simulator::isUsable(machine.devices.at(disk)); }

std::vector<Handle> returnedMembers(const Machine& machine, const Volume& volume) {
  std::vector<Handle> returned;
  std::copy_if(volume.stale.begin(), volume.stale.end(), std::back_inserter(returned),
               [&](Handle disk) { return isUsable(machine, disk); });
  return returned;
}

void forgetLost(const Machine& machine, std::vector<Handle>& catchUp) {
  const auto isLost = [&](Handle disk) { return !isUsable(machine, disk); };
  catchUp.erase(std::remove_if(catchUp.begin(), catchUp.end(), isLost), catchUp.end());
}

void beginAnew(Machine& machine, Volume& volume, std::vector<Handle> returned) {
  volume.work->catchUp = std::move(returned);
  volume.work->elapsedMs = 0;
  volume.work->carryMs = 0;
  volume.work->totalMs = durationOf(machine, volume, WorkKind::MIGRATE);
  ++machine.changes;
}

/// What is stale still has nothing of the new layout.
void end(Volume& volume) {
  const Work work = std::move(*volume.work);
  volume.work.reset();
  volume.size = work.targetSize;
  for (const Handle disk : work.catchUp) bringUpToDate(volume, disk);
  volume.blank = volume.stale;
  if (work.rewrites) volume.initialized = true;
}

}  // namespace

void settleMigration(Machine& machine, Volume& volume) {
  if (healthOf(machine, volume) == Health::LOST) return;
  Work& work = *volume.work;
  forgetLost(machine, work.catchUp);
  if (work.elapsedMs == 0) work.catchUp = returnedMembers(machine, volume);  // nothing has been missed yet
  if (!wouldServeAtTarget(machine, volume, work.catchUp)) {
    std::vector<Handle> returned = returnedMembers(machine, volume);
    if (wouldServeAtTarget(machine, volume, returned)) beginAnew(machine, volume, std::move(returned));
  } else if (work.elapsedMs >= work.totalMs) {
    end(volume);
  }
}

}  // namespace simulator
