// The values that an argument may have, as the service tells them.
import { useEffect, useState } from "preact/hooks";
import { ask } from "../api/client";
import type { Field, Operation } from "../api/document";
import type { Candidates } from "../api/schema";
import { messages } from "../messages/messages";
import { counts, missing, type Values, type Wanted } from "./change";

export type Candidate = Candidates["items"][number];

export interface Choices {
  isAsking: boolean;
  items: Candidate[];
  size: Candidates["size"];
}

export const kNoChoices: Choices = { isAsking: false, items: [], size: null };

/** An argument is only asked for where it counts. */
const withItsWord = (field: Field, values: Values): Values =>
  field.when ? { ...values, [field.when.field]: field.when.word } : values;

/** The address that lists the values of an argument; the others go along, so that values are judged with them. */
export function candidatesPath(operation: Operation, field: Field, wanted: Wanted, values: Values): string {
  const query = new URLSearchParams({ limit: "1000" });
  const known = withItsWord(field, values);
  for (const other of operation.fields) {
    const value = known[other.name];
    if (other.name === field.name || value === undefined || value === "" || !counts(other, known)) continue;
    query.set(other.name, Array.isArray(value) ? value.join(",") : String(value));
  }
  return `actions/${wanted.type}/${wanted.id}/${operation.id}/${field.name}?${query}`;
}

/** While others are missing the service refuses each value for that alone, which tells nothing of the value. */
export function judged(items: Candidate[], operation: Operation, field: Field, values: Values): Candidate[] {
  if (missing(operation, withItsWord(field, values)).every((each) => each.name === field.name)) return items;
  return items.map((item) => ({ ...item, allowed: true, errorId: null, words: null }));
}

/** What was chosen and is no candidate any more stays there, to be taken back. */
export function withGone(choices: Choices, chosen: string[]): Candidate[] {
  if (choices.isAsking) return [];
  const known = new Set(choices.items.map((each) => each.value));
  const gone = chosen.filter((value) => !known.has(value));
  const items = gone.map((value) => ({ value, object: null, allowed: false, errorId: null, words: messages.machine.gone }));
  return [...choices.items, ...items];
}

/** Asks anew when the others have changed, or the machine; until the answer is there the last one stays. */
export function useChoices(operation: Operation, field: Field, wanted: Wanted, values: Values, revision = 0): Choices {
  const [choices, setChoices] = useState<Choices>({ ...kNoChoices, isAsking: field.hasCandidates });
  const path = field.hasCandidates && wanted.id !== "" ? candidatesPath(operation, field, wanted, values) : null;
  useEffect(() => {
    if (!path) {
      setChoices(kNoChoices);
      return;
    }
    const end = new AbortController();
    ask<Candidates>(path, { signal: end.signal }).then(
      (told) => setChoices({ isAsking: false, items: judged(told.items, operation, field, values), size: told.size }),
      () => !end.signal.aborted && setChoices(kNoChoices), // without an answer the value is typed in
    );
    return () => end.abort();
  }, [path, revision]);
  return choices;
}
