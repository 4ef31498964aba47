import { fieldOf, type Operation } from "../api/document";
import { words } from "../format/units";
import { useChoices, type Candidate, type Choices } from "../live/candidates";
import type { Values } from "../live/change";
import { kCreate, type StepProps } from "../live/draft";
import { revisionOf, usePicture } from "../live/machine_context";
import { messages } from "../messages/messages";

/** How data and redundancy lie; for each level, what could take it now. */
export function CreateLevel({ operation, values, onValues }: StepProps) {
  const field = fieldOf(operation, "raidLevel");
  const { items } = useChoices(operation, field, kCreate, values, revisionOf(usePicture()));
  const choose = (level: string): void => {
    // What was chosen for another level may not be there for this one.
    const { stripSize: _, ...rest } = values;
    onValues({ ...rest, raidLevel: level });
  };
  return (
    <fieldset class="levels">
      <legend class="muted">{field.help}</legend>
      {items.map((item) => (
        <LevelCard
          key={item.value}
          operation={operation}
          values={values}
          item={item}
          isChosen={values["raidLevel"] === item.value}
          onChosen={() => choose(item.value)}
        />
      ))}
    </fieldset>
  );
}

interface CardProps {
  operation: Operation;
  values: Values;
  item: Candidate;
  isChosen: boolean;
  onChosen: () => void;
}

function LevelCard({ operation, values, item, isChosen, onChosen }: CardProps) {
  const { disks: _, arrayId: __, ...rest } = values;
  const known = { ...rest, raidLevel: item.value };
  const revision = revisionOf(usePicture());
  const disks = useChoices(operation, fieldOf(operation, "disks"), kCreate, known, revision);
  const arrays = useChoices(operation, fieldOf(operation, "arrayId"), kCreate, known, revision);
  return (
    <label class="level choice">
      <input type="radio" name="level" checked={isChosen} disabled={!item.allowed} onChange={onChosen} />
      <span>
        <strong>{words(item.value)}</strong>
        <span>{messages.create.levels[item.value]}</span>
        <span class="muted">{item.words ?? whatCan(disks, arrays)}</span>
      </span>
    </label>
  );
}

function whatCan(disks: Choices, arrays: Choices): string {
  const allowed = disks.items.filter((each) => each.allowed).length;
  const refusal = disks.items.find((each) => each.words)?.words;
  const ofDisks = allowed === 0 && refusal ? messages.create.noDisks(refusal) : messages.create.canDisks(allowed);
  return `${ofDisks} ${messages.create.canArrays(arrays.items.filter((each) => each.allowed).length)}`;
}
