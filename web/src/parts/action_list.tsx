import { useEffect, useRef, useState } from "preact/hooks";
import { ask } from "../api/client";
import type { Action, Actions } from "../api/schema";
import { operationWords, words } from "../format/units";
import type { Values, Wanted } from "../live/change";
import { pageOf } from "../live/steps";
import { useReasons } from "../live/rights";
import { messages } from "../messages/messages";
import { ChangeDialog } from "./change_dialog";
import { ReasonedButtons } from "./reasoned_buttons";

interface Props {
  type: string;
  id: string;
  name: string | undefined; // none: it is not there any more, and what was done with it is still told
  revision: number; // a new one: what may be done may have changed
  offers?: (action: Action) => boolean; // which are shown; all without it
  onDone?: (operation: string) => void; // one was carried out, and its answer has been read
}

const labelOf = (action: Action): string =>
  operationWords(action.operation) + (action.word ? `: ${words(action.word)}` : "");

/** What can be done with an object; what cannot stands there with the service's reason. */
export function ActionList({ type, id, name, revision, offers, onDone }: Props) {
  const [actions, setActions] = useState<Action[]>([]);
  const [wanted, setWanted] = useState<Wanted | null>(null);
  const reasonOf = useReasons();
  const done = useRef<string | null>(null);
  const isThere = name !== undefined;
  useEffect(() => {
    if (!isThere) return setActions([]);
    let isHere = true;
    ask<Actions>(`actions/${type}/${id}`).then(
      (told) => isHere && setActions(told.actions),
      () => isHere && setActions([]), // the object is not there any more
    );
    return () => {
      isHere = false;
    };
  }, [type, id, revision, isThere]);
  const shown = actions.filter((action) => !pageOf(action.operation) && (!offers || offers(action)));
  if (shown.length === 0 && !wanted) return null;
  const refused = shown.filter((action) => action.verdict === "refused");
  const close = (): void => {
    setWanted(null);
    if (done.current) onDone?.(done.current);
    done.current = null;
  };
  return (
    <section aria-labelledby="actions-title" class="actions">
      <h3 id="actions-title">{messages.change.title}</h3>
      <ReasonedButtons
        buttons={shown
          .filter((action) => action.verdict !== "refused")
          .map((action) => ({
            label: labelOf(action),
            reason: reasonOf(action.operation),
            onPress: () => {
              const given: Values = action.argument ? { [action.argument]: action.word ?? "" } : {};
              const needs = action.needs.map((each) => each.name);
              setWanted({ operation: action.operation, type, id, name: name ?? "", given, needs });
            },
          }))}
      />
      {refused.length > 0 && (
        <details>
          <summary>{messages.change.refused(refused.length)}</summary>
          <ul class="plain">
            {refused.map((action) => (
              <li key={labelOf(action)}>
                {labelOf(action)}: <span class="muted">{action.words}</span>
              </li>
            ))}
          </ul>
        </details>
      )}
      {wanted && <ChangeDialog wanted={wanted} onClose={close} onDone={() => (done.current = wanted.operation)} />}
    </section>
  );
}
