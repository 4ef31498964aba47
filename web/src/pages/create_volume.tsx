import { useEffect, useRef } from "preact/hooks";
import type { Operation } from "../api/document";
import { labelOf } from "../format/facts";
import type { Values } from "../live/change";
import { useDeed } from "../live/deed";
import { draftFor, kCreate, kDraft, kSteps, lackedBy, reach } from "../live/draft";
import { useOutlook } from "../live/forecast";
import { useKept } from "../live/kept";
import { revisionOf } from "../live/machine_context";
import { useOperations } from "../live/operations";
import type { Machine, Picture } from "../live/picture";
import type { Place } from "../live/place";
import { messages } from "../messages/messages";
import { ComingCard } from "../parts/coming_card";
import { CreateDeed } from "../parts/create_deed";
import { CreateDisks } from "../parts/create_disks";
import { CreateLevel } from "../parts/create_level";
import { CreateProperties } from "../parts/create_properties";
import { WizardSteps } from "../parts/wizard_steps";

/** A volume in four steps: level, disks, properties, plan. */
export function CreateVolumePage({ picture, place }: { picture: Picture; place: Place }) {
  const operation = useOperations().get(kCreate.operation);
  const { machine } = picture;
  return (
    <>
      <h1>{messages.pages.create}</h1>
      {machine && operation ? (
        <Wizard operation={operation} machine={machine} revision={revisionOf(picture)} place={place} />
      ) : (
        <p class="muted">{messages.loading}</p>
      )}
    </>
  );
}

interface Props {
  operation: Operation;
  machine: Machine;
  revision: number;
  place: Place;
}

function Wizard({ operation, machine, revision, place }: Props) {
  const [values, setValues] = useKept<Values>(kDraft, draftFor(machine));
  const asked = Number(place.rest[0] ?? 1);
  const furthest = reach(operation, values);
  const step = kSteps.includes(asked) ? Math.min(asked, furthest) : 1;
  const deed = useDeed(operation, kCreate, values);
  const forecast = useOutlook(deed, operation, kCreate, values, revision);
  const title = useRef<HTMLHeadingElement>(null);
  useEffect(() => title.current?.focus(), [step]);
  const part = { operation, values, onValues: setValues };
  return (
    <>
      <WizardSteps step={step} furthest={furthest} />
      <div class="wizard">
        <section class="card wizard-main" aria-labelledby="step-title" data-step={step}>
          <h2 id="step-title" ref={title} tabIndex={-1}>
            {messages.create.step(step, kSteps.length, messages.create.steps[step - 1] ?? "")}
          </h2>
          {step === 1 && <CreateLevel {...part} />}
          {step === 2 && <CreateDisks {...part} />}
          {step === 3 && <CreateProperties {...part} />}
          {step === 4 && <CreateDeed {...part} deed={deed} onAgain={() => setValues(draftFor(machine))} />}
          {step < kSteps.length && <Moves operation={operation} values={values} step={step} />}
        </section>
        {!deed.isDone && <ComingCard machine={machine} forecast={forecast} none={messages.create.pictureNone} />}
      </div>
    </>
  );
}

function Moves({ operation, values, step }: { operation: Operation; values: Values; step: number }) {
  const lacked = lackedBy(operation, values, step);
  return (
    <div class="locate">
      {step > 1 && (
        <a class="button" href={`#/create/${step - 1}`}>
          {messages.create.back}
        </a>
      )}
      <button
        type="button"
        class="primary"
        disabled={lacked.length > 0}
        onClick={() => (location.hash = `#/create/${step + 1}`)}
      >
        {messages.create.next}
      </button>
      {lacked.length > 0 && (
        <span class="muted">{messages.change.missing(lacked.map((field) => labelOf(field.name)).join(", "))}</span>
      )}
    </div>
  );
}
