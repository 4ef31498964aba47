// Guided lessons on a simulated machine: what each is about, and by what each of its steps is known to be done.
import type { Disk, HistoryEntry, Volume } from "../api/schema";
import type { Machine, Picture } from "./picture";
import type { Page } from "./place";
import type { Control } from "./simulator";

/** What a lesson is tried on, as it was at its begin. */
export interface Subject {
  disk: Disk;
  volume: Volume | null;
  disks: string[]; // the ids of all disks
  row: number; // of the last entry of the history
}

/** What a step is held against. */
export interface Seen {
  machine: Machine;
  picture: Picture;
  news: HistoryEntry[]; // since the lesson's begin
  page: Page;
  subject: Subject;
}

export interface LessonStep {
  control?: (subject: Subject) => Control; // done by a button
  place?: (subject: Subject) => string; // done elsewhere: its address
  isDone: (seen: Seen) => boolean;
}

export interface Lesson {
  id: string;
  subjectOf: (picture: Picture) => Subject | null;
  steps: LessonStep[];
}

/** A lesson on its way, as it is kept over a reload. */
export interface LessonRun {
  id: string; // of the lesson
  subject: Subject;
  done: number; // steps
}

export const kLessonKept = "lesson"; // where it is kept

const kDay = 86_400_000; // milliseconds

const isThere = ({ machine, subject }: Seen): boolean =>
  machine.disks.some((disk) => disk.serialNumber === subject.disk.serialNumber);
const isWrong = ({ picture }: Seen, id: string | undefined): boolean =>
  picture.health?.causes.some((cause) => cause.object.id === id) ?? false;
const works = ({ picture }: Seen, id: string | undefined): boolean => picture.jobs.some((job) => job.object.id === id);
const isNews = ({ news }: Seen, test: (entry: HistoryEntry) => boolean): boolean => news.some(test);

function subject(picture: Picture, disk: Disk | undefined, volume: Volume | null): Subject | null {
  const disks = picture.machine?.disks.map(({ id }) => id) ?? [];
  return disk ? { disk, volume, disks, row: picture.entries[0]?.row ?? 0 } : null;
}

/** A sound disk that nothing stands on. */
function looseDisk(picture: Picture): Subject | null {
  const disk = picture.machine?.disks.find((each) => each.arrayId === null && each.state === "NORMAL" && each.usage === "PASS_THROUGH");
  return subject(picture, disk, null);
}

/** A volume that may lose a disk, as health tells; rather one in whose array a spare takes over. */
function safeVolume(picture: Picture): Subject | null {
  const { health, machine } = picture;
  const safe = machine?.volumes.filter((volume) =>
    health?.volumes.some(({ id, mayFail }) => id === volume.id && mayFail > 0),
  );
  const lacksSpare = (volume: Volume): boolean =>
    health?.causes.some(({ kind, object }) => kind === "no-spare-fits" && object.id === volume.arrayId) ?? false;
  const volume = safe?.find((each) => !lacksSpare(each)) ?? safe?.[0];
  const disk = machine?.disks.find((each) => volume && each.arrayId === volume.arrayId && each.state === "NORMAL");
  return volume ? subject(picture, disk, volume) : null;
}

const onDisk = (name: string) => ({ disk }: Subject): Control => ({ name, body: { disk: disk.serialNumber } });
const dayPasses = (): Control => ({ name: "advance-clock", body: { milliseconds: kDay } });
const toVolume = ({ volume }: Subject): string => `#/machine/volume/${volume?.id}`;
const toDisk = ({ disk }: Subject): string => `#/machine/disk/${disk.id}`;
const visit = (page: Page): LessonStep => ({ place: () => `#/${page}`, isDone: (seen) => seen.page === page });

export const kLessons: Lesson[] = [
  {
    id: "recover",
    subjectOf: safeVolume,
    steps: [
      { control: onDisk("fail-disk"), isDone: (seen) => isWrong(seen, seen.subject.volume?.id) },
      visit("overview"),
      { place: () => "#/overview", isDone: (seen) => works(seen, seen.subject.volume?.id) },
      {
        control: dayPasses,
        isDone: (seen) => !works(seen, seen.subject.volume?.id) && !isWrong(seen, seen.subject.volume?.id),
      },
    ],
  },
  {
    id: "return",
    subjectOf: looseDisk,
    steps: [
      { control: onDisk("pull-disk"), isDone: (seen) => !isThere(seen) },
      visit("machine"),
      { control: onDisk("insert-disk"), isDone: isThere },
    ],
  },
  {
    id: "exchange",
    subjectOf: looseDisk,
    steps: [
      { control: onDisk("pull-disk"), isDone: (seen) => !isThere(seen) },
      {
        control: onDisk("insert-blank-disk"),
        isDone: ({ machine, subject: { disks } }) => machine.disks.some(({ id }) => !disks.includes(id)),
      },
      visit("machine"),
    ],
  },
  {
    id: "notice",
    subjectOf: looseDisk,
    steps: [
      { control: onDisk("raise-smart-event"), isDone: (seen) => isWrong(seen, seen.subject.disk.id) },
      visit("alarms"),
      {
        place: () => "#/alarms",
        isDone: (seen) =>
          isNews(seen, ({ outcome, object }) => outcome === "acknowledged" && object?.id === seen.subject.disk.id),
      },
    ],
  },
  {
    id: "light",
    subjectOf: safeVolume,
    steps: [
      {
        place: toDisk,
        isDone: (seen) => isNews(seen, ({ operation, outcome }) => operation === "locatePort" && outcome === "done"),
      },
      visit("history"),
    ],
  },
  {
    id: "verify",
    subjectOf: safeVolume,
    steps: [
      { place: toVolume, isDone: (seen) => works(seen, seen.subject.volume?.id) },
      visit("jobs"),
      { control: dayPasses, isDone: (seen) => !works(seen, seen.subject.volume?.id) },
    ],
  },
  {
    id: "cancel",
    subjectOf: safeVolume,
    steps: [
      { place: toVolume, isDone: (seen) => works(seen, seen.subject.volume?.id) },
      {
        place: () => "#/jobs",
        isDone: (seen) =>
          isNews(seen, ({ outcome, object }) => outcome === "cancelled" && object?.id === seen.subject.volume?.id),
      },
    ],
  },
  {
    id: "rename",
    subjectOf: safeVolume,
    steps: [
      {
        place: toVolume,
        isDone: ({ machine, subject: { volume } }) =>
          machine.volumes.some(({ id, name }) => id === volume?.id && name !== volume?.name),
      },
    ],
  },
];

export const lessonOf = (id: string): Lesson | undefined => kLessons.find((lesson) => lesson.id === id);

/** How many steps are done, one after the other, from those that were. */
export function stepsDone(lesson: Lesson, from: number, picture: Picture, page: Page, about: Subject): number {
  const { machine } = picture;
  if (!machine) return from;
  const seen = { machine, picture, page, subject: about, news: picture.entries.filter(({ row }) => row > about.row) };
  const step = lesson.steps[from];
  return step?.isDone(seen) ? stepsDone(lesson, from + 1, picture, page, about) : from;
}
