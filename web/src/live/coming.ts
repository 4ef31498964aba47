// What a machine comes to by a change, as its plan tells.
import type { Plan } from "../api/schema";
import type { Machine } from "./picture";

/** A volume as it will be. */
export interface Part {
  name: string;
  level: string;
  bytes: number;
  isAbout: boolean; // the size is planned, and may come out a little different
  isOther: boolean; // than it is now: it comes, or changes
}

export interface Member {
  id: string;
  name: string;
  isNew: boolean;
}

export interface ComingArray {
  name: string | null; // null: it has none yet
  bytes: number;
  parts: Part[];
  rest: number; // redundancy, and what stays free
  changes: string[]; // what becomes of its volumes, in the service's words
  members: Member[]; // none where they stay the same
}

/** A disk beside the arrays, with what becomes of it in the service's words. */
export interface ComingDisk {
  id: string;
  name: string;
  text: string;
}

export interface Coming {
  arrays: ComingArray[];
  disks: ComingDisk[];
}

type Effect = NonNullable<Plan["effects"]>[number];
type Met = Effect["objects"][number] & Pick<Effect, "fate" | "text">;

const bytesOf = (text: string | undefined): number => Number(text ?? 0);

const metBy = (plan: Plan): Met[] =>
  (plan.effects ?? []).flatMap(({ fate, text, objects }) => objects.map((met) => ({ ...met, fate, text })));

/** Of those that stay or come; null of one that comes. */
function arraysMet(machine: Machine, met: Met[]): (string | null)[] {
  const gone = met.filter(({ type, fate }) => type === "array" && fate === "goes").map(({ id }) => id);
  const ids = met.map(({ type, id }) =>
    type === "volume" ? machine.volumes.find((volume) => volume.id === id)?.arrayId : type === "array" ? id : undefined,
  );
  return [...new Set(ids)].filter((id) => id !== undefined && !gone.includes(id)) as (string | null)[];
}

/** Volumes that stay, as they will be. */
const present = (machine: Machine, met: Met[], id: string | null): Part[] =>
  machine.volumes
    .filter((volume) => volume.arrayId === id)
    .flatMap((volume) => {
      const own = met.filter((each) => each.type === "volume" && each.id === volume.id);
      const change = own.find(({ fate }) => fate === "changes");
      const part = {
        name: volume.name,
        level: change?.level || volume.raidLevel,
        bytes: bytesOf(change?.aboutTotalBytes ?? volume.totalSize),
        isAbout: change?.aboutTotalBytes !== undefined,
        isOther: change !== undefined,
      };
      return own.some(({ fate }) => fate === "goes") ? [] : [part];
    });

const fresh = (met: Met[]): Part[] =>
  met
    .filter(({ type, fate }) => type === "volume" && fate === "comes")
    .map(({ name, level, aboutTotalBytes }) => ({
      name: name ?? "",
      level: level ?? "",
      bytes: bytesOf(aboutTotalBytes),
      isAbout: true,
      isOther: true,
    }));

function arrayAsPlanned(machine: Machine, met: Met[], id: string | null, more: Part[]): ComingArray {
  const array = machine.arrays.find((each) => each.id === id);
  const own = met.filter((each) => each.type === "array" && each.id === id);
  const isOfIt = (each: Met): boolean =>
    each.fate === "comes" ? more.length > 0 : machine.volumes.some((volume) => volume.id === each.id && volume.arrayId === id);
  const volumes = met.filter((each) => each.type === "volume" && isOfIt(each));
  const members = [...own, ...volumes].find((each) => each.members)?.members ?? [];
  const isMember = (disk: string): boolean => machine.disks.some((each) => each.id === disk && each.arrayId === id);
  const parts = [...present(machine, met, id), ...more];
  const bytes = bytesOf(own.find((each) => each.aboutTotalBytes)?.aboutTotalBytes ?? array?.totalSize);
  return {
    name: array?.name ?? null,
    bytes,
    parts,
    rest: Math.max(0, bytes - parts.reduce((sum, part) => sum + part.bytes, 0)),
    changes: volumes.filter(({ fate }) => fate === "changes").map(({ text }) => text),
    members: members.map((each) => ({ id: each.id ?? "", name: each.name ?? "", isNew: id !== null && !isMember(each.id ?? "") })),
  };
}

/** The arrays that a change meets as they will be, new volumes in the first of them, and the disks that it meets beside these. */
export function comingOf(machine: Machine, plan: Plan): Coming {
  const met = metBy(plan);
  const volumes = fresh(met);
  const host = met.find(({ type, fate }) => type === "array" && (fate === "comes" || fate === "changes"))?.id;
  const arrays = arraysMet(machine, met).map((id) => arrayAsPlanned(machine, met, id, id === host ? volumes : []));
  const members = new Set(arrays.flatMap((array) => array.members.map(({ id }) => id)));
  return { arrays, disks: disksMet(met.filter(({ id }) => !members.has(id ?? ""))) };
}

/** Each with all that befalls it. */
function disksMet(met: Met[]): ComingDisk[] {
  const disks = new Map<string, ComingDisk>();
  for (const { type, id, name, text } of met) {
    if (type !== "disk" || !id) continue;
    const known = disks.get(id);
    disks.set(id, { id, name: name ?? "", text: known ? `${known.text} ${text}` : text });
  }
  return [...disks.values()];
}

export const isNothing = ({ arrays, disks }: Coming): boolean => arrays.length === 0 && disks.length === 0;
