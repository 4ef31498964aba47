import type { Other, Replacement } from "../live/replacement";
import { messages } from "../messages/messages";

interface Props {
  replacement: Replacement;
  lost: Other[];
  onKept: (replacement: Replacement) => void;
}

/** Another disk has gone: all stops until it is back, or somebody says that it was meant. */
export function LostOthers({ replacement, lost, onKept }: Props) {
  const names = lost.map(({ name, bay }) => messages.replace.other(name, bay));
  const ids = lost.map((each) => each.id);
  const goOn = (): void => onKept({ ...replacement, others: replacement.others.filter(({ id }) => !ids.includes(id)) });
  return (
    <div class="refusal stacked" role="alert" data-lost={lost.length}>
      <strong>{messages.replace.stop(names.join(", "))}</strong>
      <span>{messages.replace.putBack(replacement.bay)}</span>
      <div class="locate">
        <button type="button" onClick={goOn}>
          {messages.replace.meant}
        </button>
      </div>
    </div>
  );
}
