import { useEffect, useRef, useState } from "preact/hooks";
import type { ComponentChildren } from "preact";
import type { Deed } from "../live/deed";
import { messages } from "../messages/messages";
import { PlanView } from "./plan_view";

interface Props {
  deed: Deed;
  name: string; // to be typed where something is lost
  isWhole: boolean;
  done: string;
  children: ComponentChildren; // further buttons
}

/** The plan, its confirmation, and the deed. Whoever presses a button finds the keys at what comes of it, since the button goes. */
export function DeedView({ deed, name, isWhole, done, children }: Props) {
  const [typed, setTyped] = useState("");
  const { plan, isBusy, isDone } = deed;
  useEffect(() => setTyped(""), [plan]); // another plan may lose something else
  const isPressed = useRef(false);
  const outcome = useRef<HTMLDivElement>(null);
  useEffect(() => {
    if (!isPressed.current || isBusy) return;
    isPressed.current = false;
    outcome.current?.focus();
  }, [isBusy]);
  const pressing = (act: () => void) => (): void => {
    isPressed.current = true;
    act();
  };
  const isDestructive = (plan?.lost?.length ?? 0) > 0;
  return (
    <>
      <div ref={outcome} tabIndex={-1} role="group" aria-label={messages.change.outcome} class="outcome">
        {!isDone && plan && <PlanView plan={plan} />}
        <p role="status">{isDone && done}</p>
        {deed.words && (
          <p class="refusal" role="alert">
            {deed.words}
          </p>
        )}
      </div>
      {!isDone && plan && isDestructive && (
        <div class="field">
          <label for="confirmation">{messages.change.confirm(name)}</label>
          <input
            id="confirmation"
            autoComplete="off"
            value={typed}
            onInput={(event) => setTyped(event.currentTarget.value)}
          />
        </div>
      )}
      <div class="locate">
        {!isDone && !plan && (
          <button type="button" class="primary" disabled={isBusy || !isWhole} onClick={pressing(deed.askPlan)}>
            {messages.change.plan}
          </button>
        )}
        {!isDone && plan && (
          <button type="button" class="primary" disabled={isBusy || (isDestructive && typed !== name)} onClick={pressing(deed.act)}>
            {messages.change.act}
          </button>
        )}
        {children}
      </div>
    </>
  );
}
