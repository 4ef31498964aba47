import { kReplacementSteps, type ReplacementStep } from "../live/replacement";
import { messages } from "../messages/messages";

/** All steps, with those that are done and the one that is to be done now. */
export function ReplaceSteps({ step }: { step: ReplacementStep }) {
  const now = kReplacementSteps.indexOf(step);
  return (
    <ol class="plain card guide-steps" aria-label={messages.create.stepsTitle}>
      {kReplacementSteps.map((each, index) => (
        <li key={each} aria-current={index === now ? "step" : undefined} class={index < now ? "is-done" : ""}>
          <span class="guide-mark" aria-hidden="true">
            {index < now ? "✓" : index + 1}
          </span>
          <span>
            {messages.replace.steps[each].title}
            {index < now && <span class="muted"> ({messages.replace.isDone})</span>}
          </span>
        </li>
      ))}
    </ol>
  );
}
