import type { Cause } from "../api/schema";
import type { Wanted } from "../live/change";
import { messages } from "../messages/messages";
import { MomentText } from "./moment_text";
import { ObjectLink } from "./object_link";
import { SeverityMark } from "./severity_mark";
import { StepList } from "./step_list";

/** One thing that is wrong. */
export function CauseCard({ cause, onWanted }: { cause: Cause; onWanted: (wanted: Wanted) => void }) {
  return (
    <li class={`card cause cause-${cause.severity}`} data-cause={cause.id}>
      <SeverityMark severity={cause.severity} size={24} />
      <div class="cause-body">
        <h2>{cause.text}</h2>
        <p class="muted">
          {cause.path.map((object, index) => (
            <span key={object.id}>
              {index > 0 && <span aria-hidden="true"> › </span>}
              <ObjectLink object={object} />
            </span>
          ))}
          {cause.path.length > 0 && " · "}
          <Since when={cause.since} />
        </p>
        {cause.atRisk.length > 0 && <p>{messages.atRisk(cause.atRisk.map((each) => each.name).join(", "))}</p>}
        {cause.object.type === "disk" && cause.object.id && (cause.severity === "warning" || cause.severity === "critical") && (
          <p>
            <a href={`#/replace/${cause.object.id}`}>{messages.replace.begin}</a>
          </p>
        )}
        <StepList steps={cause.steps} near={[cause.object, ...cause.path]} onWanted={onWanted} />
      </div>
    </li>
  );
}

function Since({ when }: { when: string }) {
  const [before, after] = messages.since("|").split("|");
  return (
    <span>
      {before}
      <MomentText at={when} />
      {after}
    </span>
  );
}
