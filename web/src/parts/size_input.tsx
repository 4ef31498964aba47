import { useState } from "preact/hooks";
import type { Choices } from "../live/candidates";
import { bytesOfMebibytes, entryOf, kUnits, mebibytesOf, type Unit } from "../format/size_entry";
import { size } from "../format/units";
import { messages } from "../messages/messages";

interface Props {
  id: string;
  value: string; // mebibytes; "0" for all that is free
  bounds: Choices["size"];
  describedBy: string;
  onValue: (mebibytes: string) => void;
}

const kAllFree = "0";

/** A size in the unit that one likes, or all that is free. */
export function SizeInput({ id, value, bounds, describedBy, onValue }: Props) {
  const [entry, setEntry] = useState(() => entryOf(value));
  const isAll = value === kAllFree;
  const isOutside = bounds !== null && value !== "" && !isAll && !(Number(value) >= Number(bounds.least) && Number(value) <= Number(bounds.most));
  const change = (next: { amount: string; unit: Unit }): void => {
    setEntry(next);
    onValue(mebibytesOf(next.amount, next.unit));
  };
  return (
    <div class="size-input">
      <label class="choice">
        <input
          type="checkbox"
          checked={isAll}
          onChange={() => onValue(isAll ? mebibytesOf(entry.amount, entry.unit) : kAllFree)}
        />
        {messages.change.allFree}
      </label>
      {!isAll && (
        <div class="amount">
          <input
            id={id}
            inputMode="decimal"
            autoComplete="off"
            aria-label={messages.change.amount}
            aria-describedby={describedBy}
            aria-invalid={isOutside}
            value={entry.amount}
            onInput={(event) => change({ ...entry, amount: event.currentTarget.value })}
          />
          <select
            aria-label={messages.change.unit}
            value={entry.unit}
            onChange={(event) => change({ ...entry, unit: event.currentTarget.value as Unit })}
          >
            {Object.keys(kUnits).map((unit) => (
              <option key={unit}>{unit}</option>
            ))}
          </select>
        </div>
      )}
      {bounds && (
        <span class={isOutside ? "refusal" : "muted"}>
          {messages.change.bounds(size(bytesOfMebibytes(bounds.least)), size(bytesOfMebibytes(bounds.most)))}
        </span>
      )}
    </div>
  );
}
