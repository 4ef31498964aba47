import { size, words } from "../format/units";
import { comingArray, type ComingArray, type Part } from "../live/coming";
import type { Forecast } from "../live/forecast";
import type { Machine } from "../live/picture";
import { messages } from "../messages/messages";
import { grow } from "./grow";

/** The array as it will be, as wide as the sizes that the plan tells. */
export function ComingCard({ machine, forecast }: { machine: Machine; forecast: Forecast }) {
  const coming = forecast.plan ? comingArray(machine, forecast.plan) : null;
  return (
    <section class="card wizard-aside" aria-labelledby="coming-title" data-coming={coming ? "there" : "none"}>
      <h2 id="coming-title">{messages.create.picture}</h2>
      {forecast.words && <p class="refusal">{messages.create.refused(forecast.words)}</p>}
      {coming ? <Bar coming={coming} /> : !forecast.words && <p class="muted">{messages.create.pictureNone}</p>}
    </section>
  );
}

function Bar({ coming }: { coming: ComingArray }) {
  return (
    <>
      <p>
        <strong>{coming.name ?? messages.create.newArray}</strong>{" "}
        <span class="muted number">{messages.create.about(size(String(coming.bytes)))}</span>
      </p>
      <ul class="plain stack">
        {coming.parts.map((part) => (
          <Piece key={`${part.name} ${part.isNew}`} part={part} />
        ))}
        {coming.rest > 0 && (
          <li class="piece piece-free" ref={(piece) => grow(piece, coming.rest)}>
            <span>{messages.create.rest}</span>
            <span class="number">{messages.create.about(size(String(coming.rest)))}</span>
          </li>
        )}
      </ul>
      <p class="muted">{messages.create.members(coming.members.join(", "))}</p>
    </>
  );
}

function Piece({ part }: { part: Part }) {
  const bytes = size(String(part.bytes));
  return (
    <li class={`piece piece-plain ${part.isNew ? "is-coming" : ""}`} ref={(piece) => grow(piece, part.bytes)}>
      <strong>{part.name}</strong>
      <span>
        {words(part.level)} · {part.isNew ? messages.create.about(bytes) : bytes}
      </span>
    </li>
  );
}
