import { useState } from "preact/hooks";
import { ask } from "../api/client";
import type { WhatIf, WhatIfEvent } from "../api/schema";
import { duration } from "../format/units";
import { wordsOf } from "../live/answer";
import { disksOf, type NamedObject } from "../live/objects";
import type { Picture } from "../live/picture";
import { messages } from "../messages/messages";
import { WhatIfForm } from "../parts/whatif_form";
import { WhatIfView } from "../parts/whatif_view";

const t = messages.whatIf;

function textOf(event: WhatIfEvent, disks: NamedObject[]): string {
  if ("wait" in event) return t.passes(duration(event.wait));
  const kind = "fail" in event ? "fail" : "pull";
  const id = "fail" in event ? event.fail : event.pull;
  return `${t.kinds[kind]}: ${disks.find((each) => each.id === id)?.name ?? messages.machine.gone}`;
}

/** What would come of disks that fail or are pulled out. Nothing changes by asking. */
export function WhatIfPage({ picture }: { picture: Picture }) {
  const [events, setEvents] = useState<WhatIfEvent[]>([]);
  const [told, setTold] = useState<WhatIf | null>(null);
  const [words, setWords] = useState<string | null>(null);
  const [isBusy, setBusy] = useState(false);
  const disks = disksOf(picture.machine);
  const change = (next: WhatIfEvent[]): void => {
    setEvents(next);
    setTold(null); // it was of other events
    setWords(null);
  };
  const work = (): void => {
    setBusy(true);
    setWords(null);
    ask<WhatIf>("whatif", { method: "POST", body: { events } })
      .then(setTold, (failure: unknown) => setWords(wordsOf(failure)))
      .finally(() => setBusy(false));
  };
  return (
    <>
      <h1>{messages.pages.whatif}</h1>
      <p>{t.how}</p>
      <section class="card stacked" aria-labelledby="events-title">
        <h2 id="events-title">{t.events}</h2>
        {events.length === 0 && <p class="muted">{t.noEvents}</p>}
        <ol class="lines">
          {events.map((event, index) => (
            <li key={index}>
              {textOf(event, disks)}{" "}
              <button
                type="button"
                class="small"
                disabled={isBusy}
                aria-label={t.removeOf(textOf(event, disks))}
                onClick={() => change(events.filter((_, other) => other !== index))}
              >
                {t.remove}
              </button>
            </li>
          ))}
        </ol>
        <WhatIfForm disks={disks} onEvent={(event) => change([...events, event])} />
        <div class="locate">
          <button type="button" class="primary" disabled={isBusy || events.length === 0} onClick={work}>
            {t.work}
          </button>
          <span role="status">{isBusy && t.busy}</span>
        </div>
        {words && (
          <p class="refusal" role="alert">
            {words}
          </p>
        )}
      </section>
      {told && <WhatIfView told={told} />}
    </>
  );
}
