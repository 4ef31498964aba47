// Arrays as they will be, as a plan tells.
import type { Plan } from "../api/schema";
import type { Machine } from "./picture";

export interface Part {
  name: string;
  level: string;
  bytes: number;
  isNew: boolean;
}

export interface ComingArray {
  name: string | null; // null: it has none yet
  bytes: number;
  parts: Part[];
  rest: number; // redundancy, and what stays free
  members: string[];
}

type Effect = NonNullable<Plan["effects"]>[number];
type Met = Effect["objects"][number];

const bytesOf = (text: string | undefined): number => Number(text ?? 0);

const metBy = (plan: Plan, fate: Effect["fate"], type: Met["type"]): Met[] =>
  (plan.effects ?? []).filter((each) => each.fate === fate).flatMap((each) => each.objects.filter((met) => met.type === type));

function presentIn(machine: Machine, plan: Plan, id: string | null): { name: string | null; bytes: number; parts: Part[] } {
  const array = machine.arrays.find((each) => each.id === id);
  const met = [...metBy(plan, "comes", "array"), ...metBy(plan, "changes", "array")].find((each) => each.id === id);
  const parts = machine.volumes
    .filter((volume) => volume.arrayId === id)
    .map((volume) => ({ name: volume.name, level: volume.raidLevel, bytes: bytesOf(volume.totalSize), isNew: false }));
  return { name: array?.name ?? null, bytes: bytesOf(met?.aboutTotalBytes ?? array?.totalSize), parts };
}

/** The array that new volumes come in; null where none comes. */
export function comingArray(machine: Machine, plan: Plan): ComingArray | null {
  const volumes = metBy(plan, "comes", "volume");
  const array = [...metBy(plan, "comes", "array"), ...metBy(plan, "changes", "array")][0];
  if (volumes.length === 0 || !array) return null;
  const present = presentIn(machine, plan, array.id);
  const fresh = volumes.map((each) => ({
    name: each.name ?? "",
    level: each.level ?? "",
    bytes: bytesOf(each.aboutTotalBytes),
    isNew: true,
  }));
  const parts = [...present.parts, ...fresh];
  const used = parts.reduce((sum, part) => sum + part.bytes, 0);
  const members = array.members ?? volumes[0]?.members ?? [];
  return { ...present, parts, rest: Math.max(0, present.bytes - used), members: members.map((each) => each.name) };
}
