// How numbers and moments are written, in one place.
import { messages } from "../messages/messages";

// Made once: a formatter takes longer than all that it writes of a machine.
const kNumbers = [0, 1].map((maximumFractionDigits) => new Intl.NumberFormat(messages.locale, { maximumFractionDigits }));
const kSteps = ["B", "kB", "MB", "GB", "TB", "PB"];

/** "4.4 TB" of bytes as decimal text; powers of a thousand, as disks are sold by. */
export function size(bytes: string | undefined): string {
  const value = Number(bytes);
  if (bytes === undefined || bytes === "" || !Number.isFinite(value)) return messages.unknown;
  let step = 0;
  let rest = value;
  while (rest >= 999.5 && step + 1 < kSteps.length) {
    rest /= 1000;
    step += 1;
  }
  const digits = rest < 10 && step > 0 ? 1 : 0;
  return `${kNumbers[digits]?.format(rest)} ${kSteps[step]}`;
}

const kMinute = 60;
const kHour = 60 * kMinute;
const kDay = 24 * kHour;

/** "2 h 5 min" of seconds: its two greatest parts. */
export function duration(seconds: number): string {
  const told = messages.durations;
  if (seconds < kMinute) return told.seconds(Math.max(0, Math.round(seconds)));
  const parts: [number, (count: number) => string][] = [
    [Math.floor(seconds / kDay), told.days],
    [Math.floor((seconds % kDay) / kHour), told.hours],
    [Math.floor((seconds % kHour) / kMinute), told.minutes],
  ];
  const greatest = parts.filter(([count]) => count > 0).slice(0, 2);
  return greatest.map(([count, tell]) => tell(count)).join(" ");
}

const kTime = new Intl.DateTimeFormat(messages.locale, { hour: "2-digit", minute: "2-digit", second: "2-digit" });
const kDate = new Intl.DateTimeFormat(messages.locale, { day: "numeric", month: "short", year: "numeric" });

/** A moment as this browser's clock has it; the day, too, where it is not today's. */
export function moment(when: string | number, now = Date.now()): string {
  const date = new Date(when);
  if (Number.isNaN(date.getTime())) return messages.unknown;
  const isToday = kDate.format(date) === kDate.format(now);
  return isToday ? kTime.format(date) : `${kDate.format(date)}, ${kTime.format(date)}`;
}

const kMonth = new Intl.DateTimeFormat(messages.locale, { month: "long", year: "numeric", timeZone: "UTC" });

/** "March 2026" of "2026-03". */
export function month(text: string): string {
  const date = new Date(`${text}-01T00:00:00Z`);
  return Number.isNaN(date.getTime()) ? text : kMonth.format(date);
}

/** "RAID 5" of "RAID_5", "pass through" of "PASS_THROUGH": the service's own words, to be read, unless the catalogue has others. */
export function words(word: string | undefined | null): string {
  if (!word) return messages.unknown;
  const known = messages.words[word];
  if (known) return known;
  if (/^RAID_\d+$/.test(word)) return word.replace("_", " ");
  return word.replaceAll("_", " ").toLowerCase();
}

/** "Rebuild volume" of "rebuildVolume". */
export function operationWords(operation: string): string {
  const known = messages.operations[operation];
  if (known) return known;
  const text = operation.replace(/([A-Z])/g, " $1").toLowerCase();
  return text.charAt(0).toUpperCase() + text.slice(1);
}
