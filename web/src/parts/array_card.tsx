import { useMemo } from "preact/hooks";
import type { StorageArray, Volume } from "../api/schema";
import { size, words } from "../format/units";
import type { Looks } from "../live/looks";
import { messages } from "../messages/messages";
import { grow } from "./grow";
import { SeverityMark } from "./severity_mark";

interface Props {
  array: StorageArray;
  volumes: Volume[];
  looks: Looks;
}

/** An array as a bar; drawn anew only where something of it looks different, as a controller is. */
export function ArrayCard(props: Props) {
  const { array, volumes, looks } = props;
  const signs = volumes.map(({ id, state }) => looks.signOf("volume", id, state)).join();
  return useMemo(() => card(props), [array, volumes, looks.lookOf("array", array.id), signs]);
}

/** Its volumes and what is free, each as wide as the size that it tells. */
function card({ array, volumes, looks }: Props) {
  const title = `array-${array.id}`;
  const free = Number(array.freeSize);
  return (
    <section class={`card ${looks.lookOf("array", array.id)}`} aria-labelledby={title} data-array={array.name}>
      <h2 id={title}>
        <a
          href={`#/machine/array/${array.id}`}
          onMouseEnter={() => looks.point("array", array.id)}
          onMouseLeave={() => looks.point("array", null)}
          onFocus={() => looks.point("array", array.id)}
          onBlur={() => looks.point("array", null)}
        >
          {array.name}
        </a>
      </h2>
      <p class="muted">{messages.machine.array(array.numDisks, size(array.totalSize), size(array.freeSize))}</p>
      <ul class="plain stack">
        {volumes.map((volume) => (
          <VolumePiece key={volume.id} volume={volume} looks={looks} />
        ))}
        {free > 0 && (
          <li class="piece piece-free" ref={(piece) => grow(piece, free)}>
            <span>{messages.machine.free}</span>
            <span class="number">{size(array.freeSize)}</span>
          </li>
        )}
      </ul>
    </section>
  );
}

function VolumePiece({ volume, looks }: { volume: Volume; looks: Looks }) {
  const severity = looks.severityOf("volume", volume.id, volume.state);
  return (
    <li class={`piece ${looks.lookOf("volume", volume.id)}`} ref={(piece) => grow(piece, Number(volume.totalSize))}>
      <a
        href={`#/machine/volume/${volume.id}`}
        data-volume={volume.name}
        onMouseEnter={() => looks.point("volume", volume.id)}
        onMouseLeave={() => looks.point("volume", null)}
        onFocus={() => looks.point("volume", volume.id)}
        onBlur={() => looks.point("volume", null)}
      >
        <span class="tile-head">
          <strong>{volume.name}</strong>
          <SeverityMark severity={severity} size={16} />
        </span>
        <span>
          {words(volume.raidLevel)} · {size(volume.totalSize)}
        </span>
        {volume.state !== "NORMAL" && <span class="tile-state">{words(volume.state)}</span>}
      </a>
    </li>
  );
}
