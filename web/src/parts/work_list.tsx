import type { Job } from "../api/schema";
import { messages } from "../messages/messages";
import { WorkLine } from "./work_line";

/** Work that goes on in the machine, with how far it is. */
export function WorkList({ jobs }: { jobs: Job[] }) {
  if (jobs.length === 0) return <p class="muted">{messages.work.none}</p>;
  return (
    <ul class="plain">
      {jobs.map((job) => (
        <li key={job.id} class="work" data-job={job.id}>
          <WorkLine job={job} />
        </li>
      ))}
    </ul>
  );
}
