import type { ComponentChildren } from "preact";
import type { WhatIf } from "../api/schema";
import { duration, words } from "../format/units";
import { messages } from "../messages/messages";
import { ObjectLink } from "./object_link";

const t = messages.whatIf;
const at = (seconds: number): string => (seconds === 0 ? t.atOnce : t.after(duration(seconds)));

/** What comes of it, as the service has worked it through. */
export function WhatIfView({ told }: { told: WhatIf }) {
  const idle = told.events.filter((each) => !each.happened);
  return (
    <section class="card stacked" aria-labelledby="outcome-title" data-lost={told.lost.length}>
      <h2 id="outcome-title">{t.outcome}</h2>
      {told.lost.length > 0 ? (
        <p class="refusal">{t.lost(told.lost.map((each) => each.name).join(", "))}</p>
      ) : (
        <p>
          <strong>{t.nothingLost}</strong>
        </p>
      )}
      {idle.length > 0 && <p class="muted">{t.idle(idle.length)}</p>}
      <Part title={t.changes} none={t.noChanges}>
        {told.changes.map((each, index) => (
          <li key={index}>
            <ObjectLink object={each.object} />: {words(each.from)} → <strong>{words(each.to)}</strong>, {at(each.atSeconds)}
          </li>
        ))}
      </Part>
      <Part title={t.takesOver} none={t.nobody}>
        {told.takesOver.map((each, index) => (
          <li key={index}>
            <ObjectLink object={each.object} /> {t.instead} <ObjectLink object={each.instead} />, {at(each.atSeconds)}
          </li>
        ))}
      </Part>
      <Part title={t.exposure} none={t.noExposure}>
        {told.exposure.map((each, index) => (
          <li key={index}>
            <ObjectLink object={each.object} />: {each.already ? t.already : at(each.fromSeconds)},{" "}
            <strong>{each.seconds === null ? t.endless : t.lasts(duration(each.seconds))}</strong>
          </li>
        ))}
      </Part>
      <Part title={t.assumed} none={messages.none}>
        {told.assumed.map((each) => (
          <li key={each}>{each}</li>
        ))}
      </Part>
      <p class="muted">{messages.change.decides}</p>
    </section>
  );
}

function Part({ title, none, children }: { title: string; none: string; children: ComponentChildren[] }) {
  return (
    <div>
      <h3>{title}</h3>
      {children.length === 0 ? <p class="muted">{none}</p> : <ul class="lines">{children}</ul>}
    </div>
  );
}
