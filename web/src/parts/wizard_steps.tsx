import { messages } from "../messages/messages";

/** Where one is on the way, and what can be gone back to. */
export function WizardSteps({ step, furthest }: { step: number; furthest: number }) {
  return (
    <ol class="plain wizard-steps" aria-label={messages.create.stepsTitle}>
      {messages.create.steps.map((title, index) => {
        const number = index + 1;
        const text = `${number}. ${title}`;
        const current = number === step ? "step" : undefined;
        return (
          <li key={title}>
            {number <= furthest ? (
              <a href={`#/create/${number}`} aria-current={current}>
                {text}
              </a>
            ) : (
              <span>{text}</span>
            )}
          </li>
        );
      })}
    </ol>
  );
}
