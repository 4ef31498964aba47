// A volume on its way through the four steps, and which argument is told in which.
import type { Field, Operation } from "../api/document";
import { counts, missing, ofService, type Values } from "./change";
import type { Machine } from "./picture";

export const kDraft = "create"; // where it is kept
export const kCreate = ofService("createVolume");
export const kSteps = [1, 2, 3, 4];

const kPlaces: Record<string, number> = { raidLevel: 1, source: 2, disks: 2, arrayId: 2 };

export const stepOf = (field: Field): number => kPlaces[field.name] ?? 3;

/** Names that nobody has given yet are free to be taken. */
export function draftFor(machine: Machine): Values {
  const taken = new Set(machine.volumes.map((each) => each.name));
  let number = 1;
  while (taken.has(`Volume_${number}`)) number += 1;
  return { name: `Volume_${number}`, size: "0" };
}

/** Arguments that a step still lacks. */
export const lackedBy = (operation: Operation, values: Values, step: number): Field[] =>
  missing(operation, values).filter((field) => stepOf(field) === step);

/** As far as one can go: the first step that lacks something. */
export const reach = (operation: Operation, values: Values): number =>
  kSteps.find((step) => lackedBy(operation, values, step).length > 0) ?? kSteps.length;

/** The arguments of the third step. */
export const propertiesOf = (operation: Operation, values: Values): Field[] =>
  operation.fields.filter((field) => stepOf(field) === 3 && counts(field, values));

/** What each step's part gets. */
export interface StepProps {
  operation: Operation;
  values: Values;
  onValues: (values: Values) => void;
}
