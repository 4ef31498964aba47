import { useEffect, useState } from "preact/hooks";
import { ask } from "../api/client";
import type { Actions } from "../api/schema";
import { choiceFacts } from "../format/choice_text";
import { failureWords, type Wanted } from "../live/change";
import { usePicture } from "../live/machine_context";
import { objectsOf } from "../live/objects";
import { messages } from "../messages/messages";

interface Props {
  wanted: Wanted;
  onTarget: (wanted: Wanted) => void;
}

/** Which object a change is of, where nobody has told yet; whether it can be done with it the service says. */
export function TargetInput({ wanted, onTarget }: Props) {
  const { machine } = usePicture();
  const [words, setWords] = useState<string | null>(null);
  useEffect(() => {
    setWords(null);
    if (wanted.id === "") return;
    const end = new AbortController();
    ask<Actions>(`actions/${wanted.type}/${wanted.id}`, { signal: end.signal }).then(
      (told) => setWords(refusalIn(told, wanted)),
      (failure: unknown) => !end.signal.aborted && setWords(failureWords(failure)),
    );
    return () => end.abort();
  }, [wanted.id]);
  const items = machine ? objectsOf(machine, wanted.type) : [];
  const choose = (id: string): void => {
    onTarget({ ...wanted, id, name: items.find((each) => each.id === id)?.name ?? "" });
  };
  return (
    <div class="field">
      <label for="target">{messages.change.which(wanted.type)}</label>
      <select id="target" value={wanted.id} onChange={(event) => choose(event.currentTarget.value)}>
        <option value="">{messages.change.choose}</option>
        {items.map((item) => (
          <option key={item.id} value={item.id}>
            {[item.name, choiceFacts({ value: item.id, object: null, allowed: true, errorId: null, words: null }, machine)]
              .filter(Boolean)
              .join(" · ")}
          </option>
        ))}
      </select>
      <span role="status">{words}</span>
    </div>
  );
}

function refusalIn(told: Actions, { operation, given }: Wanted): string | null {
  const action = told.actions.find(
    (each) => each.operation === operation && (each.argument === null || given[each.argument] === each.word),
  );
  return action?.verdict === "refused" ? action.words : null;
}
