import { useState } from "preact/hooks";
import { ask } from "../api/client";
import { wordsOf } from "../live/answer";
import { useReasons } from "../live/rights";
import { messages } from "../messages/messages";
import { RightButton } from "./right_button";

const kOperation = "rescan";

/** A look at the machine anew: not every bay tells by itself that a disk has come. */
export function LookAgain() {
  const [isBusy, setBusy] = useState(false);
  const [words, setWords] = useState<string | null>(null);
  const right = { isThere: true, words: useReasons()(kOperation) };
  const press = (): void => {
    setBusy(true);
    setWords(null);
    ask("mirn/rescan", { method: "POST" })
      .catch((failure: unknown) => setWords(wordsOf(failure)))
      .finally(() => setBusy(false));
  };
  return (
    <div class="locate">
      <span class="muted">{messages.replace.unseen}</span>
      <RightButton label={messages.replace.look} right={right} isBusy={isBusy} onPress={press} />
      {words && (
        <span class="refusal" role="alert">
          {words}
        </span>
      )}
    </div>
  );
}
