import type { Job } from "../api/schema";
import { duration, words } from "../format/units";
import { usePaged } from "../live/answer";
import { messages } from "../messages/messages";
import { type Column, DataTable } from "./data_table";
import { MomentText } from "./moment_text";
import { ObjectLink } from "./object_link";
import { PagedList } from "./paged_list";

const begunAt = (job: Job): string | null => job.start ?? null;

/** How long it took, where both ends were seen. */
function lasted(job: Job): string {
  const seconds = (Date.parse(job.end ?? "") - Date.parse(begunAt(job) ?? "")) / 1000;
  return Number.isNaN(seconds) ? messages.unknown : duration(seconds);
}

const t = messages.jobs;
const kColumns: Column<Job>[] = [
  { name: t.kind, cell: (job) => messages.work.kinds[job.kind] ?? words(job.kind) },
  { name: t.object, cell: (job) => <ObjectLink object={job.object} /> },
  { name: t.outcome, cell: (job) => <strong>{t.outcomes[job.outcome ?? ""] ?? words(job.outcome)}</strong> },
  { name: t.end, cell: (job) => <MomentText at={job.end ?? messages.unknown} /> },
  { name: t.lasted, cell: lasted, isNumber: true },
  { name: t.actor, cell: (job) => (job.actor === "machine" ? t.machine : job.actor) },
];

/** Work that has ended, the last first. */
export function EndedJobs({ version }: { version: string }) {
  const paged = usePaged<Job>("jobs?state=ended&limit=25", version);
  return (
    <PagedList paged={paged} none={messages.jobs.noneEnded}>
      {(jobs) => <DataTable caption={t.ended} columns={kColumns} items={jobs} keyOf={(job) => job.id} />}
    </PagedList>
  );
}
