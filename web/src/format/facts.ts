// A published form as lines to be read: a name and a value each.
import { messages } from "../messages/messages";
import { size } from "./units";

export interface Fact {
  key: string;
  label: string;
  text: string;
  ids: string[]; // where they are ids of others
}

/** "Negotiated link speed" of "negotiatedLinkSpeed". */
export function labelOf(key: string): string {
  const known = messages.fields[key];
  if (known) return known;
  const text = key.replace(/([a-z0-9])([A-Z])/g, "$1 $2").replace(/(.) Ids?$/, "$1").toLowerCase();
  return text.charAt(0).toUpperCase() + text.slice(1);
}

// Members whose values are words of the document.
const kWorded = /(?:state|usage|policy|mode|type)$/i;

function textOf(key: string, value: unknown): string {
  if (value === null || value === "") return messages.none;
  if (typeof value === "boolean") return value ? messages.yes : messages.no;
  if (/^(?:logical|physical)$/.test(key) && /^\d+$/.test(String(value))) return messages.bytes(Number(value));
  if (/Size$/i.test(key) && /^\d+$/.test(String(value))) return size(String(value));
  const told = String(value);
  return kWorded.test(key) ? (messages.words[told] ?? told) : told;
}

const idsIn = (key: string, values: unknown[]): string[] => (/Ids?$/.test(key) ? values.map(String) : []);

/** All members, those of members under both names. */
export function factsOf(form: object, above = ""): Fact[] {
  return Object.entries(form).flatMap(([key, value]): Fact[] => {
    const path = above ? `${above} ${key}` : key;
    if (Array.isArray(value)) return [{ key: path, label: labelOf(path), text: value.join(", "), ids: idsIn(key, value) }];
    if (value !== null && typeof value === "object") return factsOf(value as object, path);
    return [{ key: path, label: labelOf(path), text: textOf(key, value), ids: idsIn(key, [value]) }];
  });
}
