// All that the pages show, fetched anew when the service tells that something has changed.
import { ask, askAgain, Refusal, type Tagged } from "../api/client";
import type { Controller, Disk, Health, HistoryEntry, Job, Jobs, Port, StorageArray, Volume } from "../api/schema";
import { listen, type StreamEvent } from "../api/stream";
import type { Freshness } from "./freshness";
import { nextTask } from "./next_task";
import { shared } from "./sharing";

export interface Machine {
  controllers: Controller[];
  disks: Disk[];
  ports: Port[];
  arrays: StorageArray[];
  volumes: Volume[];
}

export interface Picture {
  freshness: Freshness;
  takenAt: number | null; // when the page fetched it
  health: Health | null;
  jobs: Job[];
  entries: HistoryEntry[];
  hasHistory: boolean;
  machine: Machine | null;
  failure: Refusal | null;
}

export const kNoPicture: Picture = {
  freshness: { kind: "connecting" },
  takenAt: null,
  health: null,
  jobs: [],
  entries: [],
  hasHistory: true,
  machine: null,
  failure: null,
};

/** Becomes another when something has happened that lists beside the picture may tell of. */
export const versionOf = ({ entries, health }: Picture): string =>
  `${entries[0]?.row ?? 0} ${health?.position.structure ?? 0} ${health?.causes.length ?? 0}`;

/** What was unknown for a moment may be known again without an event, where nobody saw it change: the beat asks then. */
export const callsForALook = ({ name }: StreamEvent, health: Health | null): boolean =>
  name === "heartbeat" ? health?.severity === "unknown" : name !== "bye";

const kLatest = 12;
const kBetween = 250; // milliseconds from one look to the next: work moves the machine's revision all the time
const kAfterFailure = 2000;

/** Keeps a picture up to date for as long as it runs. */
export class LivePicture {
  private picture = kNoPicture;
  private readonly end = new AbortController();
  private isLooking = false;
  private isStale = false;
  private readonly lists = new Map<string, Tagged<unknown>>();

  constructor(private readonly tell: (picture: Picture) => void) {}

  start(): void {
    void listen(
      {
        onOpen: () => this.opened(),
        onEvent: (event) => this.heard(event),
        onCut: () => this.cut(),
      },
      this.end.signal,
    );
    this.look();
  }

  stop(): void {
    this.end.abort();
  }

  /** Fetches everything anew, once more where it is at it already. */
  look(): void {
    this.isStale = true;
    if (!this.isLooking) void this.lookUntilFresh();
  }

  private change(part: Partial<Picture>): void {
    if (this.end.signal.aborted) return;
    this.picture = { ...this.picture, ...part };
    this.tell(this.picture);
  }

  private opened(): void {
    this.change({ freshness: { kind: "live" } });
    this.look();
  }

  private cut(): void {
    if (this.picture.freshness.kind !== "cut") this.change({ freshness: { kind: "cut", since: Date.now() } });
  }

  private heard(event: StreamEvent): void {
    if (callsForALook(event, this.picture.health)) this.look();
  }

  private async lookUntilFresh(): Promise<void> {
    this.isLooking = true;
    while (this.isStale && !this.end.signal.aborted) {
      this.isStale = false;
      const isGood = await this.fetchAll();
      if (!isGood) this.isStale = true;
      await new Promise((resolve) => window.setTimeout(resolve, isGood ? kBetween : kAfterFailure));
    }
    this.isLooking = false;
  }

  /** Whether it went well; raises nothing. */
  private async fetchAll(): Promise<boolean> {
    const { signal } = this.end;
    const get = <Body>(path: string): Promise<Body> => ask<Body>(path, { signal });
    try {
      const [health, jobs, history, controllers, disks, ports, arrays, volumes] = await Promise.all([
        get<Health>("health"),
        get<Jobs>("jobs"),
        latestEntries(get),
        this.list<Controller>("mirn/controllers"),
        this.list<Disk>("mirn/enddevices"),
        this.list<Port>("mirn/ports"),
        this.list<StorageArray>("mirn/arrays"),
        this.list<Volume>("mirn/volumes"),
      ]);
      await nextTask();
      this.change({
        health,
        jobs: jobs.items,
        entries: history ?? [],
        hasHistory: history !== null,
        machine: shared(this.picture.machine, { controllers, disks, ports, arrays, volumes }),
        takenAt: Date.now(),
        failure: null,
      });
      return true;
    } catch (failure) {
      this.change({ failure: failure instanceof Refusal ? failure : new Refusal(0, "") });
      return false;
    }
  }

  /** Each object of it that is as it was stays the very object. */
  private async list<Each>(path: string): Promise<Each[]> {
    const known = (this.lists.get(path) ?? null) as Tagged<Each[]> | null;
    const now = await askAgain<Each[]>(path, known, this.end.signal);
    if (now !== known) {
      await nextTask();
      now.body = shared(known?.body, now.body);
      this.lists.set(path, now);
    }
    return now.body;
  }
}

/** Null where the service keeps none. */
async function latestEntries(get: <Body>(path: string) => Promise<Body>): Promise<HistoryEntry[] | null> {
  try {
    return (await get<{ items: HistoryEntry[] }>(`history?limit=${kLatest}`)).items;
  } catch (failure) {
    if (failure instanceof Refusal && (failure.status === 422 || failure.status === 503)) return null;
    throw failure;
  }
}
