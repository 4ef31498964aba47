// The objects of a machine by their types, with the names that people know them by.
import type { Machine } from "./picture";

export interface NamedObject {
  id: string;
  name: string;
  form: object;
}

/** Those of a type, in the order of their list; none of a type that has no list. */
export function objectsOf(machine: Machine, type: string): NamedObject[] {
  const named = (list: { id: string; name: string }[]): NamedObject[] =>
    list.map((form) => ({ id: form.id, name: form.name, form }));
  switch (type) {
    case "controller":
      return named(machine.controllers);
    case "array":
      return named(machine.arrays);
    case "volume":
      return named(machine.volumes);
    case "disk":
      return machine.disks.map((form) => ({ id: form.id, name: `${form.type} ${form.serialNumber}`, form }));
    case "port":
      return machine.ports.map((form) => ({ id: form.id, name: `port ${form.address}`, form }));
    default:
      return [];
  }
}

/** Disks alone: enclosures and drives for other media stand among the end devices, too. */
export const disksOf = (machine: Machine | null): NamedObject[] => {
  const disks = machine?.disks.filter(({ deviceType }) => deviceType === "DISK") ?? [];
  return machine ? objectsOf({ ...machine, disks }, "disk") : [];
};

/** Null where it is not there any more. */
export const objectOf = (machine: Machine, type: string, id: string): NamedObject | null =>
  objectsOf(machine, type).find((each) => each.id === id) ?? null;
