import type { HistoryEntry } from "../api/schema";
import { messages } from "../messages/messages";
import { operationWords, words } from "./units";

const textIn = (details: object, key: string): string | null => {
  const value = (details as Record<string, unknown>)[key];
  return typeof value === "string" && value !== "" ? value : null;
};

/** One line about what has happened. */
export function entryText(entry: HistoryEntry): string {
  const { kind, operation, outcome, object, actor, details } = entry;
  const told = textIn(details, "text") ?? textIn(details, "description");
  if (kind === "alarm") return `${messages.outcomes[outcome ?? ""] ?? ""}${told ?? words(operation)}`;
  if (told) return told;
  if (kind === "job") {
    const work = messages.work.kinds[operation ?? ""] ?? words(operation);
    return messages.did(object ? messages.work.of(work, object.name) : work, words(outcome));
  }
  const deed = messages.did(operation ? operationWords(operation) : words(kind), outcome ? words(outcome) : "");
  return actor ? `${actor}: ${deed}` : deed;
}
