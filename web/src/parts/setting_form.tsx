import { useState } from "preact/hooks";
import { ask } from "../api/client";
import type { Setting } from "../api/schema";
import { labelOf } from "../format/facts";
import { wordsOf } from "../live/answer";
import type { Right } from "../live/rights";
import { messages } from "../messages/messages";

interface Props {
  name: string;
  setting: Setting;
  right: Right;
}

const t = messages.settings;

/** One setting with its bounds, as the service tells them. A change is in force after the next start. */
export function SettingForm({ name, setting, right }: Props) {
  const [value, setValue] = useState(String(setting.value));
  const [isBusy, setBusy] = useState(false);
  const [done, setDone] = useState<string | null>(null);
  const [words, setWords] = useState<string | null>(null);
  const number = Number(value);
  const isGood = /^\d+$/.test(value) && number >= setting.min && number <= setting.max;
  const submit = (event: Event): void => {
    event.preventDefault();
    setBusy(true);
    setDone(null);
    setWords(null);
    ask("mirn/config", { method: "PUT", body: { [name]: number } })
      .then(
        () => setDone(t.stored(value)),
        (failure: unknown) => setWords(wordsOf(failure)),
      )
      .finally(() => setBusy(false));
  };
  const id = `setting-${name}`;
  return (
    <form class="card stacked" onSubmit={submit} data-setting={name}>
      <div class="field narrow">
        <label for={id}>{labelOf(name.replaceAll("_", " "))}</label>
        <input
          id={id}
          inputMode="numeric"
          autoComplete="off"
          aria-describedby={`${id}-help`}
          aria-invalid={!isGood}
          disabled={right.words !== null}
          value={value}
          onInput={(event) => setValue(event.currentTarget.value)}
        />
      </div>
      <p class="muted" id={`${id}-help`}>
        {setting.description} {t.bounds(setting.min, setting.max)} {t.now(setting.value)} {t.restart}
      </p>
      <div class="locate">
        {right.isThere && (
          <button type="submit" class="primary" disabled={isBusy || !isGood || right.words !== null}>
            {t.store}
          </button>
        )}
        {right.words && <span class="muted">{right.words}</span>}
        <span role="status">{done}</span>
      </div>
      {words && (
        <p class="refusal" role="alert">
          {words}
        </p>
      )}
    </form>
  );
}
