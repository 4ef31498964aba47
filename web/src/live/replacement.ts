// A disk on its way out and another one on its way in, followed by the picture of the machine.
import type { Disk } from "../api/schema";
import { portOfDisk } from "./bays";
import { objectOf } from "./objects";
import type { Machine } from "./picture";

export interface Other {
  id: string;
  name: string;
  bay: string;
}

/** What is remembered from the begin on; all else the picture tells. */
export interface Replacement {
  id: string; // of the disk that goes
  name: string;
  portId: string | null; // of its bay; null where nobody knows it
  bay: string;
  others: Other[]; // disks that were there, and are to stay
  isFound: boolean; // somebody has found the bay
  isTaken: boolean; // somebody has said what the new disk is for
}

export const kReplacementSteps = ["light", "pull", "insert", "take", "out"] as const;
export type ReplacementStep = (typeof kReplacementSteps)[number];

export const keptAt = (diskId: string): string => `replace.${diskId}`;

/** The disks that hang on ports now, by the port of the controller. */
function attached(machine: Machine): Map<string, Disk> {
  const disks = new Map(machine.disks.map((disk) => [disk.id, disk]));
  const ends = machine.ports.filter((port) => port.localDeviceType === "END_DEVICE" && port.connectedPortId !== "");
  return new Map(
    ends.flatMap((port): [string, Disk][] => {
      const disk = disks.get(port.localDeviceId);
      return disk ? [[port.connectedPortId, disk]] : [];
    }),
  );
}

/** Where a disk is or, of a missing one, was. */
function bayOf(machine: Machine, disk: Disk): string | null {
  const last = machine.ports.find(
    (port) =>
      port.localDeviceType === "CONTROLLER" && port.localDeviceId === disk.controllerId && port.address === disk.address,
  );
  return (portOfDisk(machine, disk.id) ?? last)?.id ?? null;
}

const nameOf = (machine: Machine, diskId: string): string => objectOf(machine, "disk", diskId)?.name ?? "";

/** Null where there is no such disk. */
export function begun(machine: Machine, diskId: string): Replacement | null {
  const disk = machine.disks.find((each) => each.id === diskId);
  if (!disk) return null;
  return {
    id: diskId,
    name: nameOf(machine, diskId),
    portId: bayOf(machine, disk),
    bay: disk.address,
    others: [...attached(machine).values()]
      .filter((other) => other.id !== diskId)
      .map((other) => ({ id: other.id, name: nameOf(machine, other.id), bay: other.address })),
    isFound: false,
    isTaken: false,
  };
}

/** The disk in the bay now. */
export const diskInBay = (machine: Machine, { portId }: Replacement): Disk | null =>
  (portId === null ? null : attached(machine).get(portId)) ?? null;

export function stepOf(machine: Machine, replacement: Replacement): ReplacementStep {
  if (replacement.isTaken) return "out";
  const present = diskInBay(machine, replacement);
  if (present && present.id !== replacement.id) return "take";
  if (!replacement.isFound) return "light";
  return present ? "pull" : "insert";
}

/** Disks that were there and are to stay, and have gone. */
export function lostOthers(machine: Machine, { others }: Replacement): Other[] {
  const there = new Set([...attached(machine).values()].map((disk) => disk.id));
  return others.filter((other) => !there.has(other.id));
}

/** New disks that are in other bays. */
export function strayDisks(machine: Machine, { id, others, portId }: Replacement): Disk[] {
  const known = new Set([id, ...others.map((other) => other.id)]);
  return [...attached(machine)].filter(([port, disk]) => port !== portId && !known.has(disk.id)).map(([, disk]) => disk);
}
