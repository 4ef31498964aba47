import { useState } from "preact/hooks";
import type { Health } from "../api/schema";
import type { Wanted } from "../live/change";
import type { Picture } from "../live/picture";
import { messages } from "../messages/messages";
import { CauseCard } from "../parts/cause_card";
import { ChangeDialog } from "../parts/change_dialog";
import { EntryList } from "../parts/entry_list";
import { SeverityMark } from "../parts/severity_mark";
import { WorkList } from "../parts/work_list";

/** What is wrong, what runs, what has happened. */
export function OverviewPage({ picture }: { picture: Picture }) {
  // Here, since a cause may go while its change is looked at.
  const [wanted, setWanted] = useState<Wanted | null>(null);
  return (
    <>
      {wanted && <ChangeDialog wanted={wanted} onClose={() => setWanted(null)} />}
      {picture.health ? <State health={picture.health} onWanted={setWanted} /> : <p class="muted">{messages.loading}</p>}
      <div class="columns">
        <section class="card" aria-labelledby="work-title">
          <h2 id="work-title">{messages.work.title}</h2>
          <WorkList jobs={picture.jobs} />
        </section>
        <section class="card" aria-labelledby="latest-title">
          <h2 id="latest-title">{messages.latest.title}</h2>
          <EntryList entries={picture.entries} isKept={picture.hasHistory} />
        </section>
      </div>
    </>
  );
}

function State({ health, onWanted }: { health: Health; onWanted: (wanted: Wanted) => void }) {
  const isCalm = health.causes.length === 0 && health.severity === "ok";
  return (
    <section aria-labelledby="state-title" data-severity={health.severity}>
      <div class="headline" role="status">
        <SeverityMark severity={health.severity} size={36} />
        <h1 id="state-title">{messages.headline[health.severity]}</h1>
        {isCalm && <p class="muted">{messages.calmVolumes(health.volumes.length)}</p>}
      </div>
      <ul class="plain causes">
        {health.causes.map((cause) => (
          <CauseCard key={cause.id} cause={cause} onWanted={onWanted} />
        ))}
      </ul>
    </section>
  );
}
