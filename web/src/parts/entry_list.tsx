import type { HistoryEntry } from "../api/schema";
import { entryText } from "../format/entry_text";
import { messages } from "../messages/messages";
import { MomentText } from "./moment_text";
import { SeverityMark } from "./severity_mark";

/** What has happened, the newest first. */
export function EntryList({ entries, isKept }: { entries: HistoryEntry[]; isKept: boolean }) {
  if (!isKept) return <p class="muted">{messages.latest.off}</p>;
  if (entries.length === 0) return <p class="muted">{messages.latest.none}</p>;
  return (
    <ol class="plain entries">
      {entries.map((entry) => (
        <li key={entry.row} class="entry">
          <SeverityMark severity={entry.severity} size={16} />
          <span class="muted number">
            <MomentText at={entry.at} />
          </span>
          <span>{entryText(entry)}</span>
        </li>
      ))}
    </ol>
  );
}
