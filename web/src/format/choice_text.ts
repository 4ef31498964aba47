// A value that may be chosen, in a few words.
import type { Candidate } from "../live/candidates";
import type { Machine } from "../live/picture";
import { messages } from "../messages/messages";
import { size, words } from "./units";

/** What tells an object from others of its kind; empty where nothing is known of it. */
export function choiceFacts(item: Candidate, machine: Machine | null): string {
  const disk = machine?.disks.find((each) => each.id === item.value);
  if (disk) return [disk.address, disk.totalSize ? size(disk.totalSize) : "", words(disk.usage)].filter(Boolean).join(" · ");
  const array = machine?.arrays.find((each) => each.id === item.value);
  return array ? messages.machine.array(array.numDisks, size(array.totalSize), size(array.freeSize)) : "";
}

export const choiceName = (item: Candidate): string => item.object?.name ?? wordText(item.value);

/** "64 KB" of "SIZE_64KB", "distributed" of "RWH_DISTRIBUTED"; others as they are read. */
export const wordText = (word: string): string => {
  const strip = /^SIZE_(\d+)(KB|MB)$/.exec(word);
  return strip ? `${strip[1]} ${strip[2]}` : words(word.replace(/^RWH_/, ""));
};
