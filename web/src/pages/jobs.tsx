import { useState } from "preact/hooks";
import type { Wanted } from "../live/change";
import { type Picture, versionOf } from "../live/picture";
import { messages } from "../messages/messages";
import { ChangeDialog } from "../parts/change_dialog";
import { EndedJobs } from "../parts/ended_jobs";
import { JobStatistics } from "../parts/job_statistics";
import { JobStop } from "../parts/job_stop";
import { WorkLine } from "../parts/work_line";

/** Work that goes on, and work that has ended. */
export function JobsPage({ picture }: { picture: Picture }) {
  const [wanted, setWanted] = useState<Wanted | null>(null);
  const version = `${versionOf(picture)} ${picture.jobs.length}`;
  return (
    <>
      {wanted && <ChangeDialog wanted={wanted} onClose={() => setWanted(null)} />}
      <h1>{messages.pages.jobs}</h1>
      <section class="card stacked" aria-labelledby="running-title">
        <h2 id="running-title">{messages.jobs.running}</h2>
        {picture.jobs.length === 0 && <p class="muted">{messages.work.none}</p>}
        <ul class="plain">
          {picture.jobs.map((job) => (
            <li key={job.id} class="work" data-job={job.id}>
              <WorkLine job={job} />
              <JobStop job={job} version={version} onWanted={setWanted} />
            </li>
          ))}
        </ul>
      </section>
      <section class="card stacked" aria-labelledby="ended-title">
        <h2 id="ended-title">{messages.jobs.ended}</h2>
        <EndedJobs version={version} />
      </section>
      <JobStatistics volumes={picture.machine?.volumes ?? []} version={version} />
    </>
  );
}
