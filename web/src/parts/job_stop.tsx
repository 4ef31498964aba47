import { useEffect, useState } from "preact/hooks";
import type { Job } from "../api/schema";
import { operationWords, words } from "../format/units";
import type { Wanted } from "../live/change";
import { type Stop, stopsOf } from "../live/job_stops";
import { useReasons } from "../live/rights";
import { messages } from "../messages/messages";
import { ReasonedButtons } from "./reasoned_buttons";

interface Props {
  job: Job;
  version: string; // a new one: what may be done may have changed
  onWanted: (wanted: Wanted) => void;
}

/** Buttons for what can be done about work that runs. */
export function JobStop({ job, version, onWanted }: Props) {
  const [stops, setStops] = useState<Stop[] | null>(null);
  const reasonOf = useReasons();
  useEffect(() => {
    let isHere = true;
    stopsOf(job).then(
      (found) => isHere && setStops(found),
      () => isHere && setStops(null), // it has ended meanwhile
    );
    return () => {
      isHere = false;
    };
  }, [job.id, version]);
  if (stops === null) return null;
  if (stops.length === 0) return <p class="muted">{messages.jobs.noStop}</p>;
  return (
    <ReasonedButtons
      buttons={stops.map(({ action, wanted }) => ({
        label: `${operationWords(action.operation)}: ${words(action.word)}`,
        reason: action.verdict === "refused" ? action.words : reasonOf(action.operation),
        onPress: () => onWanted(wanted),
      }))}
    />
  );
}
