import type { Field, Operation } from "../api/document";
import { labelOf } from "../format/facts";
import { useChoices, withGone } from "../live/candidates";
import type { Value, Values, Wanted } from "../live/change";
import { revisionOf, usePicture } from "../live/machine_context";
import { messages } from "../messages/messages";
import { ChoiceList } from "./choice_list";
import { ChoiceSelect } from "./choice_select";
import { SizeInput } from "./size_input";

interface Props {
  operation: Operation;
  field: Field;
  wanted: Wanted;
  values: Values;
  onValue: (value: Value) => void;
}

const kMebibytes = "MiB";

/** One argument of a change, in the form that fits it. Which values there may be, and why not others, the service tells. */
export function FieldInput({ operation, field, wanted, values, onValue }: Props) {
  const choices = useChoices(operation, field, wanted, values, revisionOf(usePicture()));
  const value = values[field.name];
  const id = `field-${field.name}`;
  const help = `${id}-help`;
  const isGroup = field.kind === "list" || field.unit === kMebibytes;
  const isEmpty = field.hasCandidates && !isGroup && !choices.isAsking && choices.items.length === 0;
  const chosen = Array.isArray(value) ? value : value === undefined || value === "" ? [] : [String(value)];
  const items = field.hasCandidates ? withGone(choices, chosen) : field.words.map(wordItem);
  const hint = (
    <span class="muted" id={help}>
      {field.help} {!field.isNeeded && messages.change.optional}
    </span>
  );
  if (isGroup) {
    return (
      <fieldset class="field" aria-describedby={help}>
        <legend>{labelOf(field.name)}</legend>
        {hint}
        {field.kind === "list" ? (
          <ChoiceList name={id} items={items} chosen={chosen} isMany onChosen={onValue} />
        ) : (
          <SizeInput id={id} value={String(value ?? "")} bounds={choices.size} describedBy={help} onValue={onValue} />
        )}
      </fieldset>
    );
  }
  return (
    <div class="field">
      {isEmpty ? <span class="label">{labelOf(field.name)}</span> : <label for={id}>{labelOf(field.name)}</label>}
      {hint}
      {isEmpty ? (
        <span class="muted">{messages.change.nothing}</span>
      ) : field.kind === "boolean" || field.hasCandidates || items.length > 0 ? (
        <ChoiceSelect id={id} help={help} field={field} items={items} value={value} isAsking={choices.isAsking} onValue={onValue} />
      ) : (
        <PlainInput id={id} help={help} field={field} value={value} onValue={onValue} />
      )}
    </div>
  );
}

interface PlainProps {
  id: string;
  help: string;
  field: Field;
  value: Value | undefined;
  onValue: (value: Value) => void;
}

function PlainInput({ id, help, field, value, onValue }: PlainProps) {
  if (field.kind !== "number") {
    const text = typeof value === "string" ? value : "";
    return (
      <input
        id={id}
        aria-describedby={help}
        autoComplete="off"
        value={text}
        onInput={(event) => onValue(event.currentTarget.value)}
      />
    );
  }
  const { least, most } = field.bounds ?? {};
  const take = (text: string): void => onValue(/^\d+$/.test(text) ? Number(text) : "");
  return (
    <>
      <input
        id={id}
        type="number"
        min={least}
        max={most}
        aria-describedby={help}
        value={typeof value === "number" ? value : ""}
        onInput={(event) => take(event.currentTarget.value)}
      />
      {field.bounds && (
        <span class="muted">{messages.change.bounds(`${least} ${field.unit}`, `${most} ${field.unit}`)}</span>
      )}
    </>
  );
}

const wordItem = (value: string) => ({ value, object: null, allowed: true, errorId: null, words: null });
