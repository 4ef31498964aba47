import { useEffect, useState } from "preact/hooks";
import type { Role } from "../api/schema";
import { useKept } from "../live/kept";
import { kLessonKept, lessonOf, type LessonRun, stepsDone } from "../live/lessons";
import type { Picture } from "../live/picture";
import type { Page } from "../live/place";
import { useRight } from "../live/rights";
import { useSimulator } from "../live/simulator";
import { messages } from "../messages/messages";
import { LessonView } from "./lesson_view";
import { SimulatorControls } from "./simulator_controls";

interface Props {
  picture: Picture;
  page: Page;
  role: Role;
}

const t = messages.simulator;

/** What may be done to a simulated machine, where the host lets one; and lessons that use it. */
export function SimulatorDrawer({ picture, page, role }: Props) {
  const right = useRight("listSimulatorControls", role);
  const simulator = useSimulator();
  const [run, setRun] = useKept<LessonRun | null>(kLessonKept, null);
  const lesson = run ? lessonOf(run.id) : undefined;
  const [isOpen, setOpen] = useState(lesson !== undefined); // whoever has begun one finds it again
  // Also while the drawer is closed: a step may lead to what is beneath it.
  useEffect(() => {
    if (!run || !lesson) return;
    const done = stepsDone(lesson, run.done, picture, page, run.subject);
    if (done !== run.done) setRun({ ...run, done });
  }, [run, picture, page]);
  if (!right.isThere) return null;
  return (
    <details class="drawer" open={isOpen} onToggle={(event) => setOpen(event.currentTarget.open)}>
      <summary>{t.title}</summary>
      {isOpen && (
        <div class="columns">
          <section class="card" aria-labelledby="controls-title">
            <h2 id="controls-title">{t.break}</h2>
            <SimulatorControls machine={picture.machine} simulator={simulator} right={right} />
          </section>
          <section class="card" aria-labelledby="lessons-title">
            <h2 id="lessons-title">{messages.lessons.title}</h2>
            <LessonView
              picture={picture}
              simulator={simulator}
              right={right}
              run={lesson ? run : null}
              onRun={setRun}
            />
          </section>
        </div>
      )}
      {simulator.words && (
        <p class="refusal" role="alert">
          {simulator.words}
        </p>
      )}
    </details>
  );
}
