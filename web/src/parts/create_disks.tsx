import { fieldOf } from "../api/document";
import { labelOf } from "../format/facts";
import { size } from "../format/units";
import { type Choices, useChoices, withGone } from "../live/candidates";
import { kCreate, type StepProps } from "../live/draft";
import { revisionOf, usePicture } from "../live/machine_context";
import { messages } from "../messages/messages";
import { ChoiceList } from "./choice_list";

/** Disks for a new array, or an array that takes the volume in. */
export function CreateDisks(props: StepProps) {
  const { operation, values, onValues } = props;
  const field = fieldOf(operation, "source");
  return (
    <>
      <fieldset class="field">
        <legend>{messages.create.where}</legend>
        <span class="muted">{field.help}</span>
        {field.words.map((word) => (
          <label key={word} class="choice">
            <input
              type="radio"
              name="source"
              value={word}
              checked={values["source"] === word}
              onChange={() => onValues({ ...values, source: word })}
            />
            {messages.create.sources[word] ?? word}
          </label>
        ))}
      </fieldset>
      {operation.fields
        .filter((each) => each.when?.field === "source" && each.isNeeded && values["source"] === each.when.word)
        .map((each) => (
          <Picker key={each.name} {...props} name={each.name} />
        ))}
    </>
  );
}

function Picker({ operation, values, onValues, name }: StepProps & { name: string }) {
  const field = fieldOf(operation, name);
  const isMany = field.kind === "list";
  const choices = useChoices(operation, field, kCreate, values, revisionOf(usePicture()));
  const value = values[name];
  const chosen = Array.isArray(value) ? value : value ? [String(value)] : [];
  const take = (next: string[]): void => onValues({ ...values, [name]: isMany ? next : (next[0] ?? "") });
  return (
    <fieldset class="field" data-picker={name}>
      <legend>{labelOf(name)}</legend>
      <span class="muted">{field.help}</span>
      {isMany && <Sum chosen={chosen} choices={choices} />}
      <ChoiceList name={name} items={withGone(choices, chosen)} chosen={chosen} isMany={isMany} onChosen={take} />
    </fieldset>
  );
}

function Sum({ chosen, choices }: { chosen: string[]; choices: Choices }) {
  const { machine } = usePicture();
  const known = choices.items.filter((each) => chosen.includes(each.value));
  const bytes = (machine?.disks ?? [])
    .filter((disk) => known.some((each) => each.value === disk.id))
    .reduce((sum, disk) => sum + Number(disk.totalSize ?? 0), 0);
  return <p role="status">{messages.create.chosen(chosen.length, size(String(bytes)))}</p>;
}
