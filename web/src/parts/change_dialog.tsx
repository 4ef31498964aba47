import { useEffect, useRef, useState } from "preact/hooks";
import { type Operation, operationOf } from "../api/document";
import { operationWords } from "../format/units";
import { asking, counts, failureWords, isWhole, type Values, type Wanted } from "../live/change";
import { useDeed } from "../live/deed";
import { useOutlook } from "../live/forecast";
import { revisionOf, usePicture } from "../live/machine_context";
import { messages } from "../messages/messages";
import { ComingCard } from "./coming_card";
import { DeedView } from "./deed_view";
import { FieldInput } from "./field_input";
import { TargetInput } from "./target_input";

interface Props {
  wanted: Wanted;
  onClose: () => void;
  onDone?: () => void;
}

/** From what is wanted over its plan to the deed. What is lost by it is confirmed by typing the object's name. */
export function ChangeDialog({ wanted, onClose, onDone }: Props) {
  const dialog = useRef<HTMLDialogElement>(null);
  const [operation, setOperation] = useState<Operation | null>(null);
  const [target, setTarget] = useState(wanted);
  const [words, setWords] = useState<string | null>(null);
  const title = useRef<HTMLHeadingElement>(null);
  useEffect(() => {
    dialog.current?.showModal();
    title.current?.focus(); // what else is there at first gives way to the form
  }, []);
  useEffect(() => {
    operationOf(wanted.operation).then(
      (found) => setOperation(asking(found, wanted.needs ?? [])),
      (failure: unknown) => setWords(failureWords(failure)),
    );
  }, [wanted.operation]);
  const close = (): void => dialog.current?.close();
  return (
    <dialog ref={dialog} class="card" aria-labelledby="change-title" onClose={onClose} data-change={wanted.operation}>
      <h2 id="change-title" ref={title} tabIndex={-1}>
        {operationWords(wanted.operation)}
        {target.name && `: ${target.name}`}
      </h2>
      <p>{operation?.summary}</p>
      {words && (
        <p class="refusal" role="alert">
          {words}
        </p>
      )}
      {wanted.id === "" && <TargetInput wanted={target} onTarget={setTarget} />}
      {operation ? (
        <ChangeForm operation={operation} wanted={target} onClose={close} onDone={onDone} />
      ) : (
        <div class="locate">
          <button type="button" onClick={close}>
            {messages.change.cancel}
          </button>
        </div>
      )}
    </dialog>
  );
}

interface FormProps {
  operation: Operation;
  wanted: Wanted;
  onClose: () => void;
  onDone: (() => void) | undefined;
}

function ChangeForm({ operation, wanted, onClose, onDone }: FormProps) {
  const [values, setValues] = useState<Values>(wanted.given);
  const deed = useDeed(operation, wanted, values);
  const picture = usePicture();
  const isTold = wanted.id !== "" && isWhole(operation, values);
  const open = operation.fields
    .filter((field) => wanted.given[field.name] === undefined && counts(field, values))
    .sort((one, other) => Number(other.isNeeded) - Number(one.isNeeded)); // what may be left out comes last
  // Where nobody has told what is needed, the service could only tell what is missing before anything is chosen.
  const isChosen = isTold && (wanted.needs !== undefined || open.length === 0 || values !== wanted.given);
  const forecast = useOutlook(deed, operation, wanted, isChosen ? values : null, revisionOf(picture));
  useEffect(() => {
    if (deed.isDone) onDone?.();
  }, [deed.isDone]);
  return (
    <>
      {!deed.isDone &&
        open.map((field) => (
          <FieldInput
            key={field.name}
            operation={operation}
            field={field}
            wanted={wanted}
            values={values}
            onValue={(value) => setValues({ ...values, [field.name]: value })}
          />
        ))}
      {!deed.isDone && picture.machine && <ComingCard machine={picture.machine} forecast={forecast} />}
      <DeedView
        deed={deed}
        name={wanted.name}
        isWhole={isTold}
        done={messages.change.done}
      >
        <button type="button" onClick={onClose}>
          {deed.isDone ? messages.machine.close : messages.change.cancel}
        </button>
      </DeedView>
    </>
  );
}
