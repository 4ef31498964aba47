import type { ObjectName, Step } from "../api/schema";
import { operationWords } from "../format/units";
import type { Wanted } from "../live/change";
import { useOperations } from "../live/operations";
import { useReasons } from "../live/rights";
import { pageOf, wantedBy } from "../live/steps";
import { messages } from "../messages/messages";

interface Props {
  steps: Step[];
  near: ObjectName[]; // what they may be about
  onWanted: (wanted: Wanted) => void;
}

/** Operations that may help; a button opens the plan of one. */
export function StepList({ steps, near, onWanted }: Props) {
  const operations = useOperations();
  const reasonOf = useReasons();
  const reasons = [...new Set(steps.map((step) => reasonOf(step.operation)))].filter((reason) => reason !== null);
  if (steps.length === 0) return null;
  return (
    <div class="locate">
      <span class="muted">{messages.next}:</span>
      {steps.map((step, index) => {
        const operation = operations.get(step.operation);
        const label = operationWords(step.operation);
        const page = pageOf(step.operation);
        const isOff = reasonOf(step.operation) !== null;
        if (page && !isOff) {
          return (
            <a key={index} class="button" href={page}>
              {label} …
            </a>
          );
        }
        if (!operation) return <span key={index}>{label}</span>;
        return (
          <button key={index} type="button" disabled={isOff} onClick={() => onWanted(wantedBy(step, operation, near))}>
            {label} …
          </button>
        );
      })}
      {reasons.map((reason) => (
        <span key={reason} class="muted">
          {reason}
        </span>
      ))}
    </div>
  );
}
