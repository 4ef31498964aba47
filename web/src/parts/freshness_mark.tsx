import { moment } from "../format/units";
import type { Freshness } from "../live/freshness";
import { messages } from "../messages/messages";

/** Whether the page shows what is, or what was. */
export function FreshnessMark({ freshness }: { freshness: Freshness }) {
  const isCut = freshness.kind === "cut";
  return (
    <span class={`freshness freshness-${freshness.kind}`} data-freshness={freshness.kind}>
      <span class="dot" aria-hidden="true" />
      {isCut ? messages.cut(moment(freshness.since)) : freshness.kind === "live" ? messages.live : messages.connecting}
    </span>
  );
}
