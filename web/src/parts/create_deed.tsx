import { useEffect } from "preact/hooks";
import { isWhole } from "../live/change";
import type { Deed } from "../live/deed";
import { kDraft, type StepProps } from "../live/draft";
import { forget } from "../live/kept";
import { messages } from "../messages/messages";
import { DeedView } from "./deed_view";

/** What will come of it, and the deed. */
export function CreateDeed({ operation, values, deed, onAgain }: StepProps & { deed: Deed; onAgain: () => void }) {
  useEffect(() => {
    if (!deed.isDone) deed.askPlan();
  }, []);
  useEffect(() => {
    if (deed.isDone) forget(kDraft);
  }, [deed.isDone]);
  const restart = (): void => {
    onAgain();
    location.hash = "#/create";
  };
  return (
    <DeedView
      deed={deed}
      name={String(values["name"])}
      isWhole={isWhole(operation, values)}
      done={messages.create.done}
    >
      <a class="button" href={deed.isDone ? "#/machine" : "#/create/3"}>
        {deed.isDone ? messages.create.toMachine : messages.create.back}
      </a>
      <button type="button" onClick={restart}>
        {deed.isDone ? messages.create.begin : messages.create.again}
      </button>
    </DeedView>
  );
}
