import type { Job } from "../api/schema";
import { duration, words } from "../format/units";
import { messages } from "../messages/messages";
import { ObjectLink } from "./object_link";

/** Work that goes on: how far it is, and how long it will take. */
export function WorkLine({ job }: { job: Job }) {
  const kind = messages.work.kinds[job.kind] ?? words(job.kind);
  const left = job.timeLeftSeconds;
  return (
    <>
      <div class="work-head">
        <span>
          {kind}: <ObjectLink object={job.object} />
        </span>
        <span class="number">{job.percent === null ? "" : `${job.percent} %`}</span>
      </div>
      <progress max={100} value={job.percent ?? 0} aria-label={`${kind}: ${job.object.name}`} />
      <p class="muted">
        {left === null ? messages.work.leftUnknown : messages.work.left(duration(left))}, {messages.work.by(job.actor)}
      </p>
    </>
  );
}
