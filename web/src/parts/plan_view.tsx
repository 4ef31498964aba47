import type { Plan } from "../api/schema";
import { duration } from "../format/units";
import { messages } from "../messages/messages";

/** What a change will do, before it is done. */
export function PlanView({ plan }: { plan: Plan }) {
  return (
    <div class="plan">
      <ul>
        {plan.effects?.map((effect) => (
          <li key={effect.text} class={`fate-${effect.fate}`}>
            {effect.text}
          </li>
        ))}
        {plan.work?.map((work) => (
          <li key={work.kind + work.object.id}>
            {messages.change.work(messages.work.kinds[work.kind] ?? work.kind, work.object.name)}{" "}
            {typeof work.likelySeconds === "number" && messages.change.likely(duration(work.likelySeconds))}
          </li>
        ))}
        {plan.warnings?.map((warning) => (
          <li key={warning}>
            <strong>{warning}</strong>
          </li>
        ))}
      </ul>
      {plan.lost && plan.lost.length > 0 && (
        <p class="refusal">{messages.change.lost(plan.lost.map((each) => each.text).join("; "))}</p>
      )}
      <p class="muted">{messages.change.decides}</p>
    </div>
  );
}
