import { useState } from "preact/hooks";
import { ask } from "../api/client";
import type { Alarm } from "../api/schema";
import { wordsOf } from "../live/answer";
import type { Right } from "../live/rights";
import { messages } from "../messages/messages";
import { MomentText } from "./moment_text";
import { ObjectLink } from "./object_link";
import { RightButton } from "./right_button";
import { SeverityMark } from "./severity_mark";

interface Props {
  alarm: Alarm;
  right: Right;
  onAcknowledged: () => void;
}

const t = messages.alarms;

/** One alarm: what is wrong, since when, and who took notice. */
export function AlarmCard({ alarm, right, onAcknowledged }: Props) {
  const [isBusy, setBusy] = useState(false);
  const [words, setWords] = useState<string | null>(null);
  const acknowledge = (): void => {
    setBusy(true);
    ask(`alarms/${encodeURIComponent(alarm.id)}/acknowledge`, { method: "POST" })
      .then(onAcknowledged, (failure: unknown) => setWords(wordsOf(failure)))
      .finally(() => setBusy(false));
  };
  return (
    <li class={`card cause cause-${alarm.severity}`} data-alarm={alarm.id}>
      <SeverityMark severity={alarm.severity} size={24} />
      <div class="cause-body">
        <h3>{alarm.text}</h3>
        <p class="muted">
          <ObjectLink object={alarm.object} /> · {t.raised} <MomentText at={alarm.since} />
          {alarm.cleared !== null && (
            <>
              {" · "}
              {t.over} <MomentText at={alarm.cleared} />
            </>
          )}
          {alarm.count > 1 && ` · ${t.times(alarm.count)}`}
        </p>
        {alarm.atRisk.length > 0 && <p>{messages.atRisk(alarm.atRisk.map((each) => each.name).join(", "))}</p>}
        {alarm.acknowledged ? (
          <p data-acknowledged={alarm.acknowledged.by}>
            {t.noticed(alarm.acknowledged.by)} <MomentText at={alarm.acknowledged.at} />
          </p>
        ) : (
          alarm.state === "open" && (
            <div class="locate">
              <RightButton label={t.acknowledge} right={right} isBusy={isBusy} onPress={acknowledge} />
            </div>
          )
        )}
        {words && (
          <p class="refusal" role="alert">
            {words}
          </p>
        )}
      </div>
    </li>
  );
}
