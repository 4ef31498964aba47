import { useState } from "preact/hooks";
import type { Readiness } from "../api/schema";
import { useAnswer } from "../live/answer";
import type { Wanted } from "../live/change";
import { type Picture, versionOf } from "../live/picture";
import { messages } from "../messages/messages";
import { ChangeDialog } from "../parts/change_dialog";
import { CheckList } from "../parts/check_list";
import { ExposureChart } from "../parts/exposure_chart";
import { ReadinessCard } from "../parts/readiness_card";
import { SeverityMark } from "../parts/severity_mark";

const t = messages.readiness;
const kDays = [7, 30, 90, 365]; // the service takes more; these are what people ask for

/** How ready the machine is for the next fault. */
export function ReadinessPage({ picture }: { picture: Picture }) {
  const [days, setDays] = useState(30);
  const { body, words } = useAnswer<Readiness>(`readiness?verifiedWithinDays=${days}`, versionOf(picture));
  return (
    <>
      <h1>{messages.pages.readiness}</h1>
      {words && (
        <p class="refusal" role="alert">
          {words}
        </p>
      )}
      <div class="field narrow">
        <label for="days">{t.days}</label>
        <select id="days" value={String(days)} onChange={(event) => setDays(Number(event.currentTarget.value))}>
          {kDays.map((each) => (
            <option key={each} value={String(each)}>
              {t.withinDays(each)}
            </option>
          ))}
        </select>
      </div>
      {body ? <Told readiness={body} /> : !words && <p class="muted">{messages.paged.looking}</p>}
    </>
  );
}

function Told({ readiness }: { readiness: Readiness }) {
  // Here, since an item may go while its change is looked at.
  const [wanted, setWanted] = useState<Wanted | null>(null);
  return (
    <>
      {wanted && <ChangeDialog wanted={wanted} onClose={() => setWanted(null)} />}
      <section class="stacked" aria-labelledby="items-title">
        <div class="headline" data-readiness={readiness.severity}>
          <SeverityMark severity={readiness.severity} size={28} />
          <h2 id="items-title">{t.headline[readiness.severity]}</h2>
        </div>
        <ul class="plain causes">
          {readiness.items.map((item) => (
            <ReadinessCard
              key={item.kind + item.objects.map((each) => each.id).join()}
              item={item}
              onWanted={setWanted}
            />
          ))}
        </ul>
      </section>
      <div class="columns">
        <section class="card" aria-labelledby="checks-title">
          <h2 id="checks-title">{t.checks}</h2>
          <CheckList checks={readiness.checks} />
        </section>
        <section class="card" aria-labelledby="exposure-title">
          <h2 id="exposure-title">{t.exposure}</h2>
          <ExposureChart exposure={readiness.exposure} />
        </section>
      </div>
    </>
  );
}
