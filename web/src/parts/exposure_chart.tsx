import type { Readiness } from "../api/schema";
import { duration, month } from "../format/units";
import { messages } from "../messages/messages";

const t = messages.readiness;

/** For each month, how long some volume lacked its redundancy. The figures stand beside the bars. */
export function ExposureChart({ exposure }: { exposure: Readiness["exposure"] }) {
  const secondsOf = (each: Readiness["exposure"][number]): number =>
    typeof each.exposedSeconds === "number" ? each.exposedSeconds : 0;
  const most = Math.max(1, ...exposure.map(secondsOf));
  return (
    <dl class="facts">
      {exposure.map((each) => (
        <div key={each.month} class="exposure">
          <dt>{month(each.month)}</dt>
          <dd>
            <span class="number">
              {each.exposedSeconds === 0
                ? t.never
                : typeof each.exposedSeconds === "number"
                  ? duration(each.exposedSeconds)
                  : t.unknownMonth}
            </span>
            {secondsOf(each) > 0 && <progress aria-hidden="true" max={most} value={secondsOf(each)} />}
          </dd>
        </div>
      ))}
    </dl>
  );
}
