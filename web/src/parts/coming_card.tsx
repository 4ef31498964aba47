import { size, words } from "../format/units";
import { comingOf, isNothing, type ComingArray, type ComingDisk, type Part } from "../live/coming";
import type { Forecast } from "../live/forecast";
import type { Machine } from "../live/picture";
import { messages } from "../messages/messages";
import { grow } from "./grow";

interface Props {
  machine: Machine;
  forecast: Forecast;
  none?: string; // what stands there before anything can be told
}

/** What a change comes to while it is still chosen: arrays as wide as the sizes that the plan tells, and disks. */
export function ComingCard({ machine, forecast, none }: Props) {
  const coming = forecast.plan ? comingOf(machine, forecast.plan) : { arrays: [], disks: [] };
  const isEmpty = isNothing(coming);
  if (isEmpty && !forecast.words && !none) return null;
  return (
    <section class="card coming" aria-labelledby="coming-title" data-coming={isEmpty ? "none" : "there"}>
      <h3 id="coming-title">{messages.coming.title}</h3>
      {forecast.words && <p class="refusal">{messages.coming.refused(forecast.words)}</p>}
      {isEmpty && !forecast.words && <p class="muted">{none}</p>}
      {coming.arrays.map((array) => (
        <Bar key={array.name} array={array} />
      ))}
      {coming.disks.length > 0 && (
        <ul class="plain">
          {coming.disks.map((disk) => (
            <DiskLine key={disk.id} disk={disk} />
          ))}
        </ul>
      )}
    </section>
  );
}

function Bar({ array }: { array: ComingArray }) {
  return (
    <div>
      <p>
        <strong>{array.name ?? messages.coming.newArray}</strong>{" "}
        <span class="muted number">{messages.coming.about(size(String(array.bytes)))}</span>
      </p>
      <ul class="plain stack">
        {array.parts.map((part) => (
          <Piece key={part.name} part={part} />
        ))}
        {array.rest > 0 && (
          <li class="piece piece-free" ref={(piece) => grow(piece, array.rest)}>
            <span>{messages.coming.rest}</span>
            <span class="number">{messages.coming.about(size(String(array.rest)))}</span>
          </li>
        )}
      </ul>
      {array.changes.map((change) => (
        <p key={change}>{change}</p>
      ))}
      {array.members.length > 0 && (
        <p class="muted">
          {messages.coming.members(
            array.members.map(({ name, isNew }) => (isNew ? messages.coming.newMember(name) : name)).join(", "),
          )}
        </p>
      )}
    </div>
  );
}

function Piece({ part }: { part: Part }) {
  const bytes = size(String(part.bytes));
  return (
    <li class={`piece piece-plain ${part.isOther ? "is-coming" : ""}`} ref={(piece) => grow(piece, part.bytes)}>
      <strong>{part.name}</strong>
      <span>
        {words(part.level)} · {part.isAbout ? messages.coming.about(bytes) : bytes}
      </span>
    </li>
  );
}

const DiskLine = ({ disk }: { disk: ComingDisk }) => (
  <li class="coming-disk is-coming">
    <strong>{disk.name}</strong>
    <span>{disk.text}</span>
  </li>
);
