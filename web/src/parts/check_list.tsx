import type { Readiness, Severity } from "../api/schema";
import { words } from "../format/units";
import { messages } from "../messages/messages";
import { SeverityMark } from "./severity_mark";

const t = messages.readiness;
const kMarks: Record<Readiness["checks"][number]["state"], Severity> = { ok: "ok", found: "warning", unknown: "unknown" };

/** What was looked at, and whether something was found. */
export function CheckList({ checks }: { checks: Readiness["checks"] }) {
  return (
    <ul class="plain stacked">
      {checks.map((check) => (
        <li key={check.kind} class="check" data-check={check.kind}>
          <SeverityMark severity={kMarks[check.state]} size={16} />
          <span>
            {t.kinds[check.kind] ?? words(check.kind)}: <strong>{t.states[check.state]}</strong>
            {check.reason && <span class="muted"> {check.reason}</span>}
          </span>
        </li>
      ))}
    </ul>
  );
}
