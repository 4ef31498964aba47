// How objects stand out in the picture: what is wrong with them, and whether they belong to what is pointed at.
import type { Cause, Severity } from "../api/schema";
import { keyOf } from "./relations";

export interface Looks {
  severityOf(type: string, id: string | undefined, state: string | undefined): Severity;
  lookOf(type: string, id: string | undefined): string;
  point(type: string, id: string | null): void;
}

export function looksOf(causes: Cause[], related: Set<string> | null, point: Looks["point"]): Looks {
  // The worst comes first.
  const worst = new Map<string, Severity>();
  for (const cause of causes) {
    const key = keyOf(cause.object.type, cause.object.id ?? "");
    if (!worst.has(key)) worst.set(key, cause.severity);
  }
  return {
    severityOf: (type, id, state) => worst.get(keyOf(type, id ?? "")) ?? (state === "UNKNOWN" ? "unknown" : "ok"),
    lookOf: (type, id) => (related?.has(keyOf(type, id ?? "")) ? "is-related" : ""),
    point,
  };
}
