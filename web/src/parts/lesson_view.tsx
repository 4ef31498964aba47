import { useState } from "preact/hooks";
import { kLessons, lessonOf, type LessonRun } from "../live/lessons";
import type { Picture } from "../live/picture";
import type { Right } from "../live/rights";
import type { Simulator } from "../live/simulator";
import { messages } from "../messages/messages";
import { RightButton } from "./right_button";

const t = messages.lessons;

interface Props {
  picture: Picture;
  simulator: Simulator;
  right: Right;
  run: LessonRun | null;
  onRun: (run: LessonRun | null) => void;
}

/** Lessons to choose from, and the one that goes on. */
export function LessonView({ picture, simulator, right, run, onRun }: Props) {
  const [chosen, setChosen] = useState(kLessons[0]?.id ?? "");
  const lesson = lessonOf(chosen);
  const subject = lesson?.subjectOf(picture) ?? null;
  if (run) return <Steps run={run} simulator={simulator} right={right} onEnd={() => onRun(null)} />;
  return (
    <div class="stacked">
      <div class="field narrow">
        <label for="lesson">{t.choose}</label>
        <select id="lesson" value={chosen} onChange={(event) => setChosen(event.currentTarget.value)}>
          {kLessons.map(({ id }) => (
            <option key={id} value={id}>
              {t.all[id]?.title}
            </option>
          ))}
        </select>
      </div>
      <p>{t.all[chosen]?.about}</p>
      <div class="locate">
        {subject ? (
          <RightButton
            label={t.begin}
            right={right}
            isPrimary
            onPress={() => lesson && onRun({ id: lesson.id, subject, done: 0 })}
          />
        ) : (
          <span class="muted">{t.nothing}</span>
        )}
      </div>
    </div>
  );
}

interface StepsProps {
  run: LessonRun;
  simulator: Simulator;
  right: Right;
  onEnd: () => void;
}

function Steps({ run, simulator, right, onEnd }: StepsProps) {
  const { id, subject, done } = run;
  const steps = lessonOf(id)?.steps ?? [];
  const texts = t.all[id];
  const names = { disk: `${subject.disk.type} ${subject.disk.serialNumber}`, volume: subject.volume?.name ?? "" };
  const isOver = done === steps.length;
  return (
    <section class="stacked" aria-labelledby="lesson-title" data-lesson={id} data-done={done}>
      <h3 id="lesson-title">{texts?.title}</h3>
      <ol class="plain stacked">
        {steps.map((step, index) => (
          <li key={index} class="lesson-step" aria-current={index === done ? "step" : undefined}>
            <span class={index < done ? "tick-done" : "tick-open"} role="img" aria-label={index < done ? t.done : t.open}>
              {index < done ? "✓" : index + 1}
            </span>
            <span>{texts?.steps[index]?.(names)}</span>
            {index === done && step.control && (
              <RightButton
                label={t.act}
                right={right}
                isBusy={simulator.isBusy}
                onPress={() => step.control && simulator.act(step.control(subject))}
              />
            )}
            {index === done && step.place && <a href={step.place(subject)}>{t.there}</a>}
          </li>
        ))}
      </ol>
      <p role="status">{isOver && t.over}</p>
      <div class="locate">
        <button type="button" onClick={onEnd}>
          {isOver ? t.another : t.leave}
        </button>
      </div>
    </section>
  );
}
