import type { Field } from "../api/document";
import { choiceFacts, choiceName } from "../format/choice_text";
import type { Candidate } from "../live/candidates";
import type { Value } from "../live/change";
import { usePicture } from "../live/machine_context";
import { messages } from "../messages/messages";

interface Props {
  id: string;
  help: string;
  field: Field;
  items: Candidate[];
  value: Value | undefined;
  isAsking: boolean;
  onValue: (value: Value) => void;
}

/** One value out of a few; those that cannot be had say why not. */
export function ChoiceSelect({ id, help, field, items, value, isAsking, onValue }: Props) {
  const { machine } = usePicture();
  const isBoolean = field.kind === "boolean";
  const take = (chosen: string): void => onValue(isBoolean && chosen !== "" ? chosen === "true" : chosen);
  return (
    <select
      id={id}
      aria-describedby={help}
      disabled={isAsking}
      value={value === undefined ? "" : String(value)}
      onChange={(event) => take(event.currentTarget.value)}
    >
      <option value="">{field.isNeeded ? messages.change.choose : messages.change.leaveOut}</option>
      {isBoolean && <option value="false">{messages.no}</option>}
      {isBoolean && <option value="true">{messages.yes}</option>}
      {!isBoolean &&
        items.map((item) => (
          <option key={item.value} value={item.value} disabled={!item.allowed}>
            {[choiceName(item), choiceFacts(item, machine), item.words].filter(Boolean).join(" · ")}
          </option>
        ))}
    </select>
  );
}
