// What is asked of the history, as its form tells it and as the service takes it.
import type { Field } from "../api/document";

export type Filter = Record<string, string>; // by the parameters' names; moments as the browser's clock has them

/** What the list itself sees to. */
const kOwn = ["limit", "cursor"];
export const filterFields = (query: Field[]): Field[] => query.filter(({ name }) => !kOwn.includes(name));

/** A path with the parameters that are told, of these fields. */
export function narrowed(path: string, filter: Filter, fields: Field[], more: Filter = {}): string {
  const query = new URLSearchParams(more);
  for (const { name, kind } of fields) {
    const value = filter[name]?.trim();
    if (!value) continue;
    const at = new Date(value);
    if (kind !== "moment") query.set(name, value);
    else if (!Number.isNaN(at.getTime())) query.set(name, at.toISOString());
  }
  return query.size === 0 ? path : `${path}?${query}`;
}

/** The role that a word of a field takes, where its description tells: "audit takes the role administer". */
export function roleOfWord(field: Field, word: string): string | null {
  const found = /(\w+) takes the role (\w+)/.exec(field.help);
  return found?.[1] === word ? (found[2] ?? null) : null;
}
