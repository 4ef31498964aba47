// Changes that the service names as what may help.
import type { Operation } from "../api/document";
import type { ObjectName, Step } from "../api/schema";
import { ofService, type Values, type Wanted } from "./change";

/** Booleans and numbers come as texts. */
function valueOf(operation: Operation, name: string, text: string): Values[string] {
  const kind = operation.fields.find((field) => field.name === name)?.kind;
  if (kind === "boolean") return text === "true";
  return kind === "number" ? Number(text) : text;
}

/** The change that a step names. Where it does not tell of which object, that is still to be chosen. */
export function wantedBy(step: Step, operation: Operation, near: ObjectName[]): Wanted {
  const told = Object.entries(step.arguments as Record<string, string>);
  const place = operation.places[0];
  const given = Object.fromEntries(
    told.filter(([name]) => name !== place).map(([name, text]) => [name, valueOf(operation, name, text)]),
  );
  if (!place) return ofService(operation.id, given);
  const id = (step.arguments as Record<string, string>)[place] ?? "";
  const type = place.replace(/Id$/, "");
  const name = near.find((each) => each.type === type && each.id === id)?.name ?? "";
  return { operation: operation.id, type, id, name, given };
}

/** Whether an operation has a page of its own, and where. */
export const pageOf = (operation: string): string | null => (operation === "createVolume" ? "#/create" : null);
