import { useEffect, useRef } from "preact/hooks";
import type { Cause } from "../api/schema";
import { objectOf } from "../live/objects";
import type { Machine } from "../live/picture";
import { diskInBay, type Replacement, type ReplacementStep, strayDisks } from "../live/replacement";
import { messages } from "../messages/messages";
import { LocateButton } from "./locate_button";
import { LookAgain } from "./look_again";
import { TakeDisk } from "./take_disk";

interface Props {
  machine: Machine;
  replacement: Replacement;
  step: ReplacementStep;
  causes: Cause[];
  revision: number;
  onKept: (replacement: Replacement) => void;
  onFinish: () => void;
}

/** What is to be done now, and what is awaited. */
export function ReplaceStep(props: Props) {
  const { machine, replacement, step } = props;
  const title = useRef<HTMLHeadingElement>(null);
  useEffect(() => title.current?.focus(), [step]);
  const fresh = diskInBay(machine, replacement);
  const name = (fresh && objectOf(machine, "disk", fresh.id)?.name) ?? "";
  const text = messages.replace.steps[step];
  return (
    <section class="card stacked" aria-labelledby="step-title" data-step={step}>
      <h2 id="step-title" ref={title} tabIndex={-1}>
        {text.title}
      </h2>
      <p>{text.how(replacement.name, replacement.bay, name)}</p>
      <Doing {...props} />
      {text.awaits && (
        <p class="muted" role="status">
          {text.awaits}
        </p>
      )}
    </section>
  );
}

function Doing({ machine, replacement, step, causes, revision, onKept, onFinish }: Props) {
  const port = replacement.portId ?? "";
  const fresh = diskInBay(machine, replacement);
  switch (step) {
    case "light":
      return (
        <>
          <LocateButton portId={port} only="ENABLED" />
          <div class="locate">
            <button type="button" class="primary" onClick={() => onKept({ ...replacement, isFound: true })}>
              {messages.replace.found}
            </button>
          </div>
        </>
      );
    case "pull":
      return (
        <>
          <LocateButton portId={port} only="ENABLED" />
          <LookAgain />
        </>
      );
    case "insert":
      return (
        <>
          <Stray machine={machine} replacement={replacement} />
          <LookAgain />
        </>
      );
    case "take":
      if (!fresh) return null;
      return (
        <TakeDisk
          key={fresh.id}
          disk={fresh}
          name={objectOf(machine, "disk", fresh.id)?.name ?? ""}
          causes={causes}
          revision={revision}
          onTaken={() => onKept({ ...replacement, isTaken: true })}
        />
      );
    case "out":
      return (
        <>
          <LocateButton portId={port} only="DISABLED" />
          <div class="locate">
            <button type="button" class="primary" onClick={onFinish}>
              {messages.replace.finish}
            </button>
          </div>
        </>
      );
  }
}

function Stray({ machine, replacement }: { machine: Machine; replacement: Replacement }) {
  const stray = strayDisks(machine, replacement);
  if (stray.length === 0) return null;
  const bays = stray.map((disk) => disk.address).join(", ");
  return (
    <p class="refusal" role="alert">
      {messages.replace.stray(bays, replacement.bay)}
    </p>
  );
}
