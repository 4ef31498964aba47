// From what is wanted over its plan to the deed.
import { useEffect, useState } from "preact/hooks";
import type { Operation } from "../api/document";
import type { Plan } from "../api/schema";
import { carryOut, failureWords, planOf, type Values, type Wanted } from "./change";

export interface Deed {
  plan: Plan | null;
  words: string | null; // why it could not be planned or done
  isBusy: boolean;
  isDone: boolean;
  askPlan: () => void;
  act: () => void;
}

/** A plan and a deed are of what was wanted when they were made: with other values they go. */
export function useDeed(operation: Operation, wanted: Wanted, values: Values): Deed {
  const [plan, setPlan] = useState<Plan | null>(null);
  const [words, setWords] = useState<string | null>(null);
  const [isBusy, setBusy] = useState(false);
  const [isDone, setDone] = useState(false);
  useEffect(() => {
    setPlan(null);
    setDone(false);
  }, [operation, wanted, values]);
  const during = (work: Promise<void>): void => {
    setBusy(true);
    setWords(null);
    work
      .catch((failure: unknown) => {
        setWords(failureWords(failure));
        setPlan(null);
      })
      .finally(() => setBusy(false));
  };
  return {
    plan,
    words,
    isBusy,
    isDone,
    askPlan: () => during(planOf(operation, wanted, values).then(setPlan)),
    act: () => plan && during(carryOut(operation, wanted, values, plan).then(() => setDone(true))),
  };
}
