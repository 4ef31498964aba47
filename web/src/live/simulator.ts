// What may be done to a simulated machine, where the host lets one.
import { useState } from "preact/hooks";
import { ask } from "../api/client";
import { wordsOf } from "./answer";

/** A control by its name in the service's list, with its arguments. */
export interface Control {
  name: string;
  body: Record<string, string | number>;
}

export interface Simulator {
  act: (control: Control) => void;
  isBusy: boolean;
  words: string | null; // why the last one could not be done
  out: string[]; // serial numbers of disks that this page has pulled out
}

const kLeaves = "pull-disk";
const kComes = ["insert-disk", "insert-blank-disk"];

/** The disks that are out, after a control has been carried out. */
export function outAfter(out: string[], { name, body }: Control): string[] {
  const disk = String(body["disk"] ?? "");
  const others = out.filter((each) => each !== disk);
  if (name === kLeaves) return [...others, disk];
  return kComes.includes(name) ? others : out;
}

export function useSimulator(): Simulator {
  const [isBusy, setBusy] = useState(false);
  const [words, setWords] = useState<string | null>(null);
  const [out, setOut] = useState<string[]>([]);
  const act = (control: Control): void => {
    setBusy(true);
    setWords(null);
    ask(`simulator/${control.name}`, { method: "POST", body: control.body })
      // Not all that befalls the machine is an event that wakes the service.
      .then(() => ask("mirn/rescan", { method: "POST" }))
      .then(
        () => setOut((before) => outAfter(before, control)),
        (failure: unknown) => setWords(wordsOf(failure)),
      )
      .finally(() => setBusy(false));
  };
  return { act, isBusy, words, out };
}
