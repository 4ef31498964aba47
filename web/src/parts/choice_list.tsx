import { choiceFacts, choiceName } from "../format/choice_text";
import type { Candidate } from "../live/candidates";
import { usePicture } from "../live/machine_context";

interface Props {
  name: string;
  items: Candidate[];
  chosen: string[];
  isMany: boolean;
  onChosen: (chosen: string[]) => void;
}

/** Values to be ticked, each with what tells it apart; those that cannot be had say why not. */
export function ChoiceList({ name, items, chosen, isMany, onChosen }: Props) {
  const { machine } = usePicture();
  const toggle = (value: string): void => {
    if (!isMany) onChosen([value]);
    else onChosen(chosen.includes(value) ? chosen.filter((each) => each !== value) : [...chosen, value]);
  };
  return (
    <ul class="plain choices">
      {items.map((item) => (
        <li key={item.value}>
          <label class="choice">
            <input
              type={isMany ? "checkbox" : "radio"}
              name={name}
              value={item.value}
              checked={chosen.includes(item.value)}
              disabled={!item.allowed && !chosen.includes(item.value)}
              onChange={() => toggle(item.value)}
            />
            <span>
              {choiceName(item)} <span class="muted">{choiceFacts(item, machine)}</span>
              {item.words && <span class="choice-words">{item.words}</span>}
            </span>
          </label>
        </li>
      ))}
    </ul>
  );
}
