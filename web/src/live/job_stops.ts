// What can be done about work that runs, as the document and the actions of its object tell.
import { ask } from "../api/client";
import { type Operation, operationOf } from "../api/document";
import type { Action, Actions, Job } from "../api/schema";
import type { Wanted } from "./change";

export interface Stop {
  action: Action;
  wanted: Wanted;
}

/** An action on the job's object that has to do with such work, and is not its begin. */
export function isStopOf(kind: string, action: Action, operation: Operation): boolean {
  return operation.work.some(
    ({ kind: begun, when }) =>
      begun === kind && when?.word !== undefined && when.field === action.argument && when.word !== action.word,
  );
}

export async function stopsOf(job: Job): Promise<Stop[]> {
  const { type, id, name } = job.object;
  if (id === null) return [];
  const { actions } = await ask<Actions>(`actions/${type}/${id}`);
  const found = await Promise.all(
    actions.map(async (action): Promise<Stop | null> => {
      if (!action.argument || !isStopOf(job.kind, action, await operationOf(action.operation))) return null;
      const given = { [action.argument]: action.word ?? "" };
      return { action, wanted: { operation: action.operation, type, id, name, given } };
    }),
  );
  return found.filter((each): each is Stop => each !== null);
}
