// A change on its way: what it is to be, its plan, its deed.
import { ask, Refusal, type Wishes } from "../api/client";
import type { Field, Operation } from "../api/document";
import type { Plan } from "../api/schema";
import { messages } from "../messages/messages";

export type Value = string | number | boolean | string[];
export type Values = Record<string, Value>;

/** A change that somebody has chosen: of an object, with what is known of its arguments. */
export interface Wanted {
  operation: string;
  type: string;
  id: string; // empty: which object is still to be chosen
  name: string;
  given: Values;
  needs?: string[]; // what the service asks for beside what is given; without it nobody has told
}

/** A change of the service itself, which names no object. */
export const ofService = (operation: string, given: Values = {}): Wanted => ({
  operation,
  type: kService,
  id: kService,
  name: messages.service,
  given,
});

export const kService = "service";

const pathOf = (operation: Operation, wanted: Wanted): string =>
  operation.path.replace(/\{\w+\}/, encodeURIComponent(wanted.id));

const isTold = (value: Value | undefined): value is Value =>
  value !== undefined && value !== "" && !(Array.isArray(value) && value.length === 0);

/** The operation where the service asks for more of its arguments than its document does. */
export const asking = (operation: Operation, needs: string[]): Operation => ({
  ...operation,
  fields: operation.fields.map((field) => (needs.includes(field.name) ? { ...field, isNeeded: true } : field)),
});

/** Whether an argument counts with what the others are. */
export const counts = (field: Field, values: Values): boolean => !field.when || values[field.when.field] === field.when.word;

/** Only what was told and counts: what is left out the service decides. */
export function bodyOf(operation: Operation, values: Values): Values | undefined {
  if (operation.fields.length === 0) return undefined;
  const told = operation.fields.filter((field) => counts(field, values) && isTold(values[field.name]));
  return Object.fromEntries(told.map(({ name }) => [name, values[name]])) as Values;
}

/** Arguments that are needed and have not been told. */
export const missing = (operation: Operation, values: Values): Field[] =>
  operation.fields.filter((field) => field.isNeeded && counts(field, values) && !isTold(values[field.name]));

/** Whether all that is needed has been told. */
export const isWhole = (operation: Operation, values: Values): boolean => missing(operation, values).length === 0;

export const planOf = (operation: Operation, wanted: Wanted, values: Values, signal?: AbortSignal): Promise<Plan> => {
  const wishes: Wishes = { method: operation.method, body: bodyOf(operation, values) };
  if (signal) wishes.signal = signal;
  return ask<Plan>(`${pathOf(operation, wanted)}?dryRun=true`, wishes);
};

/** Only while the machine is as it was planned for. */
export const carryOut = (operation: Operation, wanted: Wanted, values: Values, plan: Plan): Promise<unknown> =>
  ask(pathOf(operation, wanted), {
    method: operation.method,
    body: bodyOf(operation, values),
    fields: { "If-Match": plan.structure ?? "" },
  });

/** What a failure of any of these is told as. */
export const failureWords = (failure: unknown): string => {
  if (!(failure instanceof Refusal) || failure.status === 0) return messages.noAnswer;
  return failure.status === 412 ? messages.change.stale : failure.message;
};
