import type { Field } from "../api/document";
import type { Role } from "../api/schema";
import { labelOf } from "../format/facts";
import { words } from "../format/units";
import { roleOfWord } from "../live/history_filter";
import { reaches } from "../live/rights";
import { messages } from "../messages/messages";

export interface Choice {
  value: string;
  name: string;
}

interface Props {
  field: Field;
  value: string;
  choices: Choice[] | null; // where there is something to choose from that the document does not list
  role: Role;
  onValue: (value: string) => void;
}

/** One thing by which a list is narrowed, as the document tells of it. */
export function FilterInput({ field, value, choices, role, onValue }: Props) {
  const id = `filter-${field.name}`;
  const common = { id, "aria-describedby": `${id}-help`, value };
  return (
    <div class="field">
      <label for={id}>{labelOf(field.name)}</label>
      {choices || field.words.length > 0 ? (
        <select {...common} onChange={(event) => onValue(event.currentTarget.value)}>
          <option value="">{messages.history.any}</option>
          {choices?.map((choice) => (
            <option key={choice.value} value={choice.value}>
              {choice.name}
            </option>
          ))}
          {field.words.map((word) => {
            const needed = roleOfWord(field, word);
            return (
              <option key={word} value={word} disabled={needed !== null && !reaches(role, needed)}>
                {words(word)}
              </option>
            );
          })}
        </select>
      ) : (
        <input
          {...common}
          type={field.kind === "moment" ? "datetime-local" : "text"}
          autoComplete="off"
          onInput={(event) => onValue(event.currentTarget.value)}
        />
      )}
      <span class="muted help" id={`${id}-help`}>
        {field.help}
      </span>
    </div>
  );
}
