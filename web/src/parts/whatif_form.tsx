import { useState } from "preact/hooks";
import type { WhatIfEvent } from "../api/schema";
import type { NamedObject } from "../live/objects";
import { messages } from "../messages/messages";
import { DiskSelect } from "./disk_select";

const t = messages.whatIf;
const kHour = 3600;
type Kind = "fail" | "pull" | "wait";

interface Props {
  disks: NamedObject[];
  onEvent: (event: WhatIfEvent) => void;
}

/** One more event: a disk that fails or is pulled out, or time that passes. */
export function WhatIfForm({ disks, onEvent }: Props) {
  const [kind, setKind] = useState<Kind>("fail");
  const [disk, setDisk] = useState("");
  const [hours, setHours] = useState("1");
  const seconds = Math.round(Number(hours) * kHour);
  const isWhole = kind === "wait" ? hours !== "" && seconds >= 0 : disk !== "";
  const submit = (event: Event): void => {
    event.preventDefault();
    if (kind === "wait") onEvent({ wait: seconds });
    else onEvent(kind === "fail" ? { fail: disk } : { pull: disk });
  };
  return (
    <form class="stacked" onSubmit={submit}>
      <div class="filters">
        <div class="field">
          <label for="event-kind">{t.what}</label>
          <select id="event-kind" value={kind} onChange={(event) => setKind(event.currentTarget.value as Kind)}>
            {(["fail", "pull", "wait"] as const).map((each) => (
              <option key={each} value={each}>
                {t.kinds[each]}
              </option>
            ))}
          </select>
        </div>
        {kind === "wait" ? (
          <div class="field">
            <label for="event-hours">{t.hours}</label>
            <input
              id="event-hours"
              type="number"
              min="0"
              step="any"
              value={hours}
              onInput={(event) => setHours(event.currentTarget.value)}
            />
          </div>
        ) : (
          <DiskSelect id="event-disk" label={t.disk} disks={disks} chosen={disk} onChosen={setDisk} />
        )}
      </div>
      <div class="locate">
        <button type="submit" disabled={!isWhole}>
          {t.add}
        </button>
      </div>
    </form>
  );
}
