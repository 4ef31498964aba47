// Machines to begin with.
import { readFileSync } from "node:fs";

const kFile = new URL("../../simulator/scenarios/default.json", import.meta.url);
const kSound = ["NVME-2", "SSATA-0", "SSATA-1"]; // wrong in the simulator's own machine
const kSpares = ["NVME-3", "LYX-6"]; // beside the one that it has
const kUnseen = ["latentErrors", "latentBadBlocks"];

/** Disks of it that belong to no array, by their serial numbers. */
export const kLooseDisks = ["TB2T7790315", "TB2T7790318", "TB4T6610092", "QV96021044E0", "OD3T2210A40F"];

const without = (object, names) => Object.fromEntries(Object.entries(object).filter(([name]) => !names.includes(name)));

/** The simulator's own machine with nothing wrong: all disks are sound, and each array has a spare that fits. */
export function calmMachine() {
  const machine = JSON.parse(readFileSync(kFile, "utf8"));
  return {
    ...machine,
    devices: machine.devices.map((device) => ({
      ...without(device, kSound.includes(device.id) ? ["state"] : []),
      ...(kSpares.includes(device.id) ? { spare: true } : {}),
    })),
    volumes: machine.volumes.map((volume) => (volume.name === "Archive" ? without(volume, kUnseen) : volume)),
  };
}
