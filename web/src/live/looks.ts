// How objects stand out in the picture: what is wrong with them, and whether they belong to what is pointed at.
import type { Cause, Severity } from "../api/schema";
import { keyOf } from "./relations";

export interface Looks {
  severityOf(type: string, id: string | undefined, state: string | undefined): Severity;
  lookOf(type: string, id: string | undefined): string;
  /** Both, to be compared with what was drawn before. */
  signOf(type: string, id: string | undefined, state: string | undefined): string;
  point(type: string, id: string | null): void;
}

export function looksOf(causes: Cause[], related: Set<string> | null, point: Looks["point"]): Looks {
  // The worst comes first.
  const worst = new Map<string, Severity>();
  for (const cause of causes) {
    const key = keyOf(cause.object.type, cause.object.id ?? "");
    if (!worst.has(key)) worst.set(key, cause.severity);
  }
  const severityOf: Looks["severityOf"] = (type, id, state) =>
    worst.get(keyOf(type, id ?? "")) ?? (state === "UNKNOWN" ? "unknown" : "ok");
  const lookOf: Looks["lookOf"] = (type, id) => (related?.has(keyOf(type, id ?? "")) ? "is-related" : "");
  return { severityOf, lookOf, signOf: (type, id, state) => `${severityOf(type, id, state)} ${lookOf(type, id)}`, point };
}
