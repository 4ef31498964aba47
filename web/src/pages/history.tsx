import { useEffect, useState } from "preact/hooks";
import { type Operation, operationOf } from "../api/document";
import type { HistoryEntry, Role } from "../api/schema";
import { entryText } from "../format/entry_text";
import { words } from "../format/units";
import { usePaged } from "../live/answer";
import { type Filter, filterFields, narrowed } from "../live/history_filter";
import type { Picture } from "../live/picture";
import type { Place } from "../live/place";
import { useRight } from "../live/rights";
import { messages } from "../messages/messages";
import { type Column, DataTable } from "../parts/data_table";
import { DownloadButton } from "../parts/download_button";
import { HistoryForm } from "../parts/history_form";
import { MomentText } from "../parts/moment_text";
import { ObjectLink } from "../parts/object_link";
import { PagedList } from "../parts/paged_list";
import { SeverityMark } from "../parts/severity_mark";

const t = messages.history;
const kColumns: Column<HistoryEntry>[] = [
  { name: t.when, cell: (entry) => <MomentText at={entry.at} />, isNumber: true },
  {
    name: t.severity,
    cell: (entry) => (
      <span class="with-mark">
        <SeverityMark severity={entry.severity} size={16} /> {messages.severities[entry.severity]}
      </span>
    ),
  },
  { name: t.kind, cell: (entry) => words(entry.kind) },
  { name: t.object, cell: (entry) => (entry.object && <ObjectLink object={entry.object} />) },
  { name: t.what, cell: entryText },
  { name: t.actor, cell: (entry) => entry.actor },
];

const atFirst = ({ object }: Place): Filter => (object ? { objectType: object.type, objectId: object.id } : {});

interface Props {
  picture: Picture;
  place: Place;
  role: Role;
}

/** What has happened, narrowed by all that the service takes. */
export function HistoryPage({ picture, place, role }: Props) {
  const [operation, setOperation] = useState<Operation | null>(null);
  const [filter, setFilter] = useState(() => atFirst(place));
  const right = useRight("exportHistory", role);
  useEffect(() => {
    operationOf("listHistory").then(setOperation, () => setOperation(null));
  }, []);
  const fields = filterFields(operation?.query ?? []);
  const span = fields.filter(({ kind }) => kind === "moment");
  return (
    <>
      <h1>{messages.pages.history}</h1>
      {operation && (
        <>
          <HistoryForm fields={fields} filter={filter} machine={picture.machine} role={role} onFilter={setFilter} />
          <section class="card stacked" aria-labelledby="entries-title">
            <h2 id="entries-title">{t.entries}</h2>
            <Entries path={narrowed("history", filter, fields, { limit: "50" })} newest={picture.entries[0]?.row ?? 0} />
          </section>
          <section class="card stacked" aria-labelledby="export-title">
            <h2 id="export-title">{t.export}</h2>
            <p class="muted">{t.exportHow}</p>
            <DownloadButton
              label={t.exportButton}
              path={narrowed("history/export", filter, span)}
              file="history.ndjson"
              right={right}
            />
          </section>
        </>
      )}
    </>
  );
}

/** The newest first. What has happened since is offered, and moves nothing by itself. */
function Entries({ path, newest }: { path: string; newest: number }) {
  const [seen, setSeen] = useState(newest);
  const paged = usePaged<HistoryEntry>(path, seen);
  return (
    <>
      {newest > seen && (
        <p>
          <button type="button" onClick={() => setSeen(newest)}>
            {t.newer}
          </button>
        </p>
      )}
      <PagedList paged={paged} none={t.none}>
        {(entries) => <DataTable caption={t.entries} columns={kColumns} items={entries} keyOf={(entry) => entry.row} />}
      </PagedList>
    </>
  );
}
