import { useEffect, useState } from "preact/hooks";
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

/** The plan, its confirmation, and the deed. */
export function DeedView({ deed, name, isWhole, done, children }: Props) {
  const [typed, setTyped] = useState("");
  const { plan, isBusy, isDone } = deed;
  useEffect(() => setTyped(""), [plan]); // another plan may lose something else
  const isDestructive = (plan?.lost?.length ?? 0) > 0;
  return (
    <>
      {!isDone && plan && <PlanView plan={plan} />}
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
      <p role="status">{isDone && done}</p>
      {deed.words && (
        <p class="refusal" role="alert">
          {deed.words}
        </p>
      )}
      <div class="locate">
        {!isDone && !plan && (
          <button type="button" class="primary" disabled={isBusy || !isWhole} onClick={deed.askPlan}>
            {messages.change.plan}
          </button>
        )}
        {!isDone && plan && (
          <button type="button" class="primary" disabled={isBusy || (isDestructive && typed !== name)} onClick={deed.act}>
            {messages.change.act}
          </button>
        )}
        {children}
      </div>
    </>
  );
}
