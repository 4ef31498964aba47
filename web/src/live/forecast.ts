// What would come of a change as it is told so far, while somebody still chooses.
import { useEffect, useState } from "preact/hooks";
import type { Operation } from "../api/document";
import type { Plan } from "../api/schema";
import { failureWords, isWhole, planOf, type Values, type Wanted } from "./change";
import type { Deed } from "./deed";

export interface Forecast {
  plan: Plan | null;
  words: string | null; // the service's, where it would refuse
}

const kPause = 200; // milliseconds in which nothing more was chosen

/** Both null while something is missing, or nothing told. What was forecast before stays until the answer is there. */
function useForecast(operation: Operation, wanted: Wanted, values: Values | null, revision: number): Forecast {
  const [forecast, setForecast] = useState<Forecast>({ plan: null, words: null });
  const asked = values && isWhole(operation, values) ? JSON.stringify([wanted.id, values]) : null;
  useEffect(() => {
    if (values === null || asked === null) {
      setForecast({ plan: null, words: null });
      return;
    }
    const end = new AbortController();
    const timer = window.setTimeout(() => {
      planOf(operation, wanted, values, end.signal).then(
        (plan) => setForecast({ plan, words: null }),
        (failure: unknown) => !end.signal.aborted && setForecast({ plan: null, words: failureWords(failure) }),
      );
    }, kPause);
    return () => {
      window.clearTimeout(timer);
      end.abort();
    };
  }, [asked, revision]);
  return forecast;
}

/** The same until there is a plan, then what that tells. Nothing is asked once it is done: the same again would be refused. */
export function useOutlook(deed: Deed, operation: Operation, wanted: Wanted, values: Values | null, revision: number): Forecast {
  const isChoosing = deed.plan === null && !deed.isDone;
  const forecast = useForecast(operation, wanted, isChoosing ? values : null, revision);
  return deed.plan ? { plan: deed.plan, words: null } : forecast;
}
