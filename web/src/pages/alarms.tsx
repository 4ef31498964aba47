import { useState } from "preact/hooks";
import type { Alarm, Role } from "../api/schema";
import { usePaged } from "../live/answer";
import { type Picture, versionOf } from "../live/picture";
import { useRight } from "../live/rights";
import { messages } from "../messages/messages";
import { AlarmCard } from "../parts/alarm_card";
import { PagedList } from "../parts/paged_list";

/** What is wrong over time, and who took notice of it. */
export function AlarmsPage({ picture, role }: { picture: Picture; role: Role }) {
  const right = useRight("acknowledgeAlarm", role);
  const [noticed, setNoticed] = useState(0);
  const version = `${versionOf(picture)} ${noticed}`;
  const list = (alarms: Alarm[]) => (
    <ul class="plain causes">
      {alarms.map((alarm) => (
        <AlarmCard
          key={`${alarm.id} ${alarm.since}`}
          alarm={alarm}
          right={right}
          onAcknowledged={() => setNoticed((count) => count + 1)}
        />
      ))}
    </ul>
  );
  const open = usePaged<Alarm>("alarms?limit=50", version);
  const cleared = usePaged<Alarm>("alarms?state=cleared&limit=25", version);
  return (
    <>
      <h1>{messages.pages.alarms}</h1>
      <section class="stacked" aria-labelledby="open-title">
        <h2 id="open-title">{messages.alarms.open}</h2>
        <PagedList paged={open} none={messages.alarms.noneOpen}>
          {list}
        </PagedList>
      </section>
      <section class="stacked" aria-labelledby="cleared-title">
        <h2 id="cleared-title">{messages.alarms.cleared}</h2>
        <PagedList paged={cleared} none={messages.alarms.noneCleared}>
          {list}
        </PagedList>
      </section>
    </>
  );
}
