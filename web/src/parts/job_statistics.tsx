import type { JobCount, Volume } from "../api/schema";
import { duration, words } from "../format/units";
import { useAnswer } from "../live/answer";
import { messages } from "../messages/messages";
import { type Column, DataTable } from "./data_table";

const t = messages.jobs;

/** How long such work took so far. */
export function JobStatistics({ volumes, version }: { volumes: Volume[]; version: string }) {
  const { body } = useAnswer<{ items: JobCount[] }>("jobs/statistics", version);
  if (!body || body.items.length === 0) return null;
  const nameOf = (id: string | null): string =>
    id === null ? t.allVolumes : (volumes.find((each) => each.id === id)?.name ?? t.goneVolume);
  const columns: Column<JobCount>[] = [
    { name: t.kind, cell: (each) => messages.work.kinds[each.kind] ?? words(each.kind) },
    { name: t.object, cell: (each) => nameOf(each.volumeId) },
    { name: t.count, cell: (each) => each.count, isNumber: true },
    { name: t.completed, cell: (each) => each.completed, isNumber: true },
    {
      name: t.median,
      cell: (each) => (each.medianSeconds === null ? messages.unknown : duration(each.medianSeconds)),
      isNumber: true,
    },
  ];
  return (
    <section class="card stacked" aria-labelledby="statistics-title">
      <h2 id="statistics-title">{t.statistics}</h2>
      <DataTable
        caption={t.statistics}
        columns={columns}
        items={body.items}
        keyOf={(each) => `${each.kind} ${each.volumeId}`}
      />
    </section>
  );
}
