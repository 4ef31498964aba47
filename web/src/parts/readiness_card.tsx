import type { ReadinessItem } from "../api/schema";
import type { Wanted } from "../live/change";
import { ObjectLink } from "./object_link";
import { SeverityMark } from "./severity_mark";
import { StepList } from "./step_list";

/** One thing that makes the next fault worse than it need be. */
export function ReadinessCard({ item, onWanted }: { item: ReadinessItem; onWanted: (wanted: Wanted) => void }) {
  return (
    <li class={`card cause cause-${item.severity}`} data-item={item.kind}>
      <SeverityMark severity={item.severity} size={24} />
      <div class="cause-body">
        <h3>{item.text}</h3>
        <p class="muted">
          {item.objects.map((object, index) => (
            <span key={object.id}>
              {index > 0 && ", "}
              <ObjectLink object={object} />
            </span>
          ))}
        </p>
        <StepList steps={item.steps} near={item.objects} onWanted={onWanted} />
      </div>
    </li>
  );
}
