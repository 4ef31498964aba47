// What happens, as the service tells it: server-sent events by fetch, so that the token stays out of addresses.
import { exchange, refusalOf } from "./client";

export interface StreamEvent {
  name: string;
  id: string | null;
  data: unknown;
}

/** Cuts a text that comes in pieces into events. */
export class EventReader {
  private rest = "";

  /** The events that the piece completes. */
  take(piece: string): StreamEvent[] {
    this.rest = (this.rest + piece).replaceAll("\r\n", "\n");
    const blocks = this.rest.split("\n\n");
    this.rest = blocks.pop() ?? "";
    return blocks.map(eventOf).filter((each): each is StreamEvent => each !== null);
  }
}

function eventOf(block: string): StreamEvent | null {
  let name = "message";
  let id: string | null = null;
  const data: string[] = [];
  for (const line of block.split("\n")) {
    const colon = line.indexOf(":");
    const field = colon < 0 ? line : line.slice(0, colon);
    const value = colon < 0 ? "" : line.slice(colon + 1).replace(/^ /, "");
    if (field === "event") name = value;
    else if (field === "id") id = value;
    else if (field === "data") data.push(value);
  }
  return data.length === 0 ? null : { name, id, data: JSON.parse(data.join("\n")) };
}

export interface Listener {
  onOpen(): void;
  onEvent(event: StreamEvent): void;
  onCut(): void;
}

const kFirstPause = 500; // milliseconds; doubles up to the longest
const kLongestPause = 10_000;
const kSilence = 40_000; // the service is heard each 15 seconds

/** Listens until the signal, and comes back after cuts where it was. Raises nothing. */
export async function listen(listener: Listener, signal: AbortSignal): Promise<void> {
  let last: string | null = null;
  let pause = kFirstPause;
  while (!signal.aborted) {
    const heard = await hear(last, listener, signal);
    last = heard.last;
    if (signal.aborted) return;
    listener.onCut();
    pause = heard.wasOpen ? kFirstPause : Math.min(pause * 2, kLongestPause);
    await rest(pause, signal);
  }
}

/** One connection, from its begin to its cut. */
async function hear(
  from: string | null,
  listener: Listener,
  signal: AbortSignal,
): Promise<{ last: string | null; wasOpen: boolean }> {
  const own = new AbortController();
  const end = (): void => own.abort();
  signal.addEventListener("abort", end, { once: true });
  let last = from;
  let wasOpen = false;
  let patience = window.setTimeout(end, kSilence);
  try {
    const fields: Record<string, string> = from ? { "Last-Event-ID": from } : {};
    const answer = await exchange("events/stream", { fields, signal: own.signal });
    if (!answer.ok || !answer.body) throw await refusalOf(answer);
    wasOpen = true;
    listener.onOpen();
    const reader = new EventReader();
    const bytes = answer.body.pipeThrough(new TextDecoderStream()).getReader();
    for (;;) {
      const { done, value } = await bytes.read();
      if (done) break;
      window.clearTimeout(patience);
      patience = window.setTimeout(end, kSilence);
      for (const event of reader.take(value)) {
        last = event.id ?? last;
        listener.onEvent(event);
      }
    }
  } catch {
    // A cut is told by whoever listens; the next try shows whether it lasts.
  } finally {
    window.clearTimeout(patience);
    signal.removeEventListener("abort", end);
  }
  return { last, wasOpen };
}

/** Sooner where the browser says that it is online again. */
function rest(milliseconds: number, signal: AbortSignal): Promise<void> {
  return new Promise((resolve) => {
    const go = (): void => {
      window.clearTimeout(timer);
      window.removeEventListener("online", go);
      signal.removeEventListener("abort", go);
      resolve();
    };
    const timer = window.setTimeout(go, milliseconds);
    window.addEventListener("online", go);
    signal.addEventListener("abort", go);
  });
}
