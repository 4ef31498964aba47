import { useEffect, useState } from "preact/hooks";
import { ask, Refusal } from "../api/client";
import type { Action, Actions } from "../api/schema";
import { useReasons } from "../live/rights";
import { messages } from "../messages/messages";

const kOperation = "locatePort";

/** The light of a port, on or off with one click; what the service refuses is told in its words. */
export function LocateButton({ portId, only }: { portId: string; only?: string }) {
  const [actions, setActions] = useState<Action[]>([]);
  const [words, setWords] = useState<string | null>(null);
  const reason = useReasons()(kOperation);
  useEffect(() => {
    let isHere = true;
    ask<Actions>(`actions/port/${portId}`).then(
      (told) => isHere && setActions(told.actions.filter((each) => each.operation === kOperation)),
      (failure) => isHere && setWords(wordsOf(failure)),
    );
    return () => {
      isHere = false;
    };
  }, [portId]);
  const press = (state: string): void => {
    ask(`mirn/ports/${portId}/locate`, { method: "PUT", body: { state } }).then(
      () => setWords(messages.machine.lights[state] ?? null),
      (failure) => setWords(wordsOf(failure)),
    );
  };
  const offered = actions.filter((action) => only === undefined || action.word === only);
  if (only !== undefined && offered.length === 0 && words === null) return null;
  return (
    <div class="locate">
      {offered.map((action) => (
        <button
          key={action.word}
          type="button"
          disabled={reason !== null || action.verdict === "refused"}
          title={action.words ?? undefined}
          onClick={() => press(action.word ?? "")}
        >
          {messages.machine.locate[action.word ?? ""] ?? action.word}
        </button>
      ))}
      <span role="status">{words ?? reason ?? offered.find((each) => each.verdict === "refused")?.words}</span>
    </div>
  );
}

const wordsOf = (failure: unknown): string =>
  failure instanceof Refusal && failure.status !== 0 ? failure.message : messages.noAnswer;
