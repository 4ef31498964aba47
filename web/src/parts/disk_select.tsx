import type { ComponentChildren } from "preact";
import type { NamedObject } from "../live/objects";
import { messages } from "../messages/messages";

interface Props {
  id: string;
  label: string;
  disks: Pick<NamedObject, "id" | "name">[];
  chosen: string;
  isOff?: boolean;
  onChosen: (id: string) => void;
  children?: ComponentChildren; // what can be done with it
}

/** One of some disks. */
export function DiskSelect({ id, label, disks, chosen, isOff = false, onChosen, children }: Props) {
  return (
    <div class="field">
      <label for={id}>{label}</label>
      <div class="locate">
        <select id={id} class="narrow" value={chosen} disabled={isOff} onChange={(event) => onChosen(event.currentTarget.value)}>
          <option value="">{messages.change.choose}</option>
          {disks.map((each) => (
            <option key={each.id} value={each.id}>
              {each.name}
            </option>
          ))}
        </select>
        {children}
      </div>
    </div>
  );
}
