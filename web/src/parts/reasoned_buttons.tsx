import { useId } from "preact/hooks";

export interface Reasoned {
  label: string;
  reason: string | null; // why it is out of use; null where it is not
  onPress: () => void;
}

/** Buttons; behind those that are out of use for one reason this stands once. */
export function ReasonedButtons({ buttons }: { buttons: Reasoned[] }) {
  const id = useId();
  const reasons = [...new Set(buttons.map(({ reason }) => reason))].sort((one, other) => (one ?? "").localeCompare(other ?? ""));
  return (
    <>
      {reasons.map((reason, index) => (
        <div key={reason} class="locate">
          {buttons
            .filter((button) => button.reason === reason)
            .map(({ label, onPress }) => (
              <button
                key={label}
                type="button"
                disabled={reason !== null}
                aria-describedby={reason === null ? undefined : `${id}-${index}`}
                onClick={onPress}
              >
                {label} …
              </button>
            ))}
          {reason !== null && (
            <span id={`${id}-${index}`} class="muted">
              {reason}
            </span>
          )}
        </div>
      ))}
    </>
  );
}
