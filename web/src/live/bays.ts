// Where disks are: the ports of a controller, with what is at their other ends.
import type { Disk, Port } from "../api/schema";
import type { Machine } from "./picture";

export interface Bay {
  key: string;
  address: string;
  port: Port | null; // the controller's; null for a disk that no port leads to
  disk: Disk | null; // null where the port is free
}

/** The bays of each controller in the order of its ports; behind them disks that are known and not attached. */
export function allBays(machine: Machine): Bay[][] {
  const ownerOf = new Map(machine.ports.map((port) => [port.id, port.localDeviceId]));
  const diskOf = new Map(machine.disks.map((disk) => [disk.id, disk]));
  return machine.controllers.map(({ id }) => baysAmong(machine, id, ownerOf, diskOf));
}

function baysAmong(
  machine: Machine,
  controllerId: string,
  ownerOf: Map<string, string | null>,
  diskOf: Map<string, Disk>,
): Bay[] {
  const bays: Bay[] = machine.ports
    .filter((port) => port.localDeviceType === "CONTROLLER" && port.localDeviceId === controllerId)
    .map((port) => {
      const disk = diskOf.get(ownerOf.get(port.connectedPortId) ?? "") ?? null;
      return { key: port.id, address: port.address, port, disk };
    });
  const placed = new Set(bays.map((bay) => bay.disk?.id));
  for (const disk of machine.disks) {
    if (disk.controllerId !== controllerId || placed.has(disk.id)) continue;
    bays.push({ key: disk.id, address: disk.address, port: null, disk });
  }
  return bays;
}

/** The port that a disk hangs on. */
export function portOfDisk(machine: Machine, diskId: string): Port | null {
  const own = machine.ports.find((port) => port.localDeviceType === "END_DEVICE" && port.localDeviceId === diskId);
  return machine.ports.find((port) => port.id === own?.connectedPortId) ?? null;
}
