import { useId } from "preact/hooks";
import type { Right } from "../live/rights";

interface Props {
  label: string;
  right: Right;
  isBusy?: boolean;
  isPrimary?: boolean;
  onPress: () => void;
}

/** A button; for who may not, it is out of use, and the reason stands beside it. */
export function RightButton({ label, right, isBusy = false, isPrimary = false, onPress }: Props) {
  const id = useId();
  if (!right.isThere) return null;
  return (
    <>
      <button
        type="button"
        class={isPrimary ? "primary" : undefined}
        disabled={isBusy || right.words !== null}
        aria-describedby={right.words ? id : undefined}
        onClick={onPress}
      >
        {label}
      </button>
      {right.words && (
        <span id={id} class="muted">
          {right.words}
        </span>
      )}
    </>
  );
}
