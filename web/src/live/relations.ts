// Who belongs to whom, as the ids in the published forms tell.
import type { Machine } from "./picture";

export const keyOf = (type: string, id: string): string => `${type}/${id}`;

/** An object with those that it stands on, and those that stand on it. Empty for one that is not there. */
export function relatedTo(machine: Machine, type: string, id: string): Set<string> {
  const arrays = arraysOf(machine, type, id);
  const found = new Set<string>([keyOf(type, id)]);
  for (const array of machine.arrays.filter((each) => arrays.has(each.id))) {
    found.add(keyOf("array", array.id));
    for (const controller of array.controllerIds) found.add(keyOf("controller", controller));
  }
  for (const disk of machine.disks) {
    const isOfController = type === "controller" && disk.controllerId === id;
    const isMember = type !== "controller" && disk.arrayId !== null && arrays.has(disk.arrayId);
    if (isOfController || (isMember && type !== "disk")) found.add(keyOf("disk", disk.id));
    if (type === "disk" && disk.id === id) found.add(keyOf("controller", disk.controllerId));
  }
  for (const volume of machine.volumes) {
    if (type === "volume" ? volume.id !== id : !arrays.has(volume.arrayId)) continue;
    found.add(keyOf("volume", volume.id));
    if (type === "volume" && volume.journalingDriveId) found.add(keyOf("disk", volume.journalingDriveId));
  }
  return found;
}

function arraysOf(machine: Machine, type: string, id: string): Set<string> {
  switch (type) {
    case "array":
      return new Set([id]);
    case "volume":
      return new Set(machine.volumes.filter((each) => each.id === id).map((each) => each.arrayId));
    case "disk":
      return new Set(machine.disks.flatMap((each) => (each.id === id && each.arrayId ? [each.arrayId] : [])));
    case "controller":
      return new Set(machine.arrays.filter((each) => each.controllerIds.includes(id)).map((each) => each.id));
    default:
      return new Set();
  }
}
