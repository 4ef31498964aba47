// How numbers and moments are written, in one place.
import { messages } from "../messages/en";

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
  return `${rest.toLocaleString("en", { maximumFractionDigits: digits })} ${kSteps[step]}`;
}

const kMinute = 60;
const kHour = 60 * kMinute;
const kDay = 24 * kHour;

/** "2 h 5 min" of seconds: its two greatest parts. */
export function duration(seconds: number): string {
  if (seconds < kMinute) return `${Math.max(0, Math.round(seconds))} s`;
  const parts: [number, string][] = [
    [Math.floor(seconds / kDay), "d"],
    [Math.floor((seconds % kDay) / kHour), "h"],
    [Math.floor((seconds % kHour) / kMinute), "min"],
  ];
  const told = parts.filter(([count]) => count > 0).slice(0, 2);
  return told.map(([count, unit]) => `${count} ${unit}`).join(" ");
}

const kTime = new Intl.DateTimeFormat("en-GB", { hour: "2-digit", minute: "2-digit", second: "2-digit" });
const kDate = new Intl.DateTimeFormat("en-GB", { day: "numeric", month: "short", year: "numeric" });

/** A moment as this browser's clock has it; the day, too, where it is not today's. */
export function moment(when: string | number, now = Date.now()): string {
  const date = new Date(when);
  if (Number.isNaN(date.getTime())) return messages.unknown;
  const isToday = kDate.format(date) === kDate.format(now);
  return isToday ? kTime.format(date) : `${kDate.format(date)}, ${kTime.format(date)}`;
}

const kMonth = new Intl.DateTimeFormat("en-GB", { month: "long", year: "numeric", timeZone: "UTC" });

/** "March 2026" of "2026-03". */
export function month(text: string): string {
  const date = new Date(`${text}-01T00:00:00Z`);
  return Number.isNaN(date.getTime()) ? text : kMonth.format(date);
}

/** "RAID 5" of "RAID_5", "pass through" of "PASS_THROUGH": the service's own words, to be read. */
export function words(word: string | undefined | null): string {
  if (!word) return messages.unknown;
  if (/^RAID_\d+$/.test(word)) return word.replace("_", " ");
  return word.replaceAll("_", " ").toLowerCase();
}

/** "Rebuild volume" of "rebuildVolume". */
export function operationWords(operation: string): string {
  const text = operation.replace(/([A-Z])/g, " $1").toLowerCase();
  return text.charAt(0).toUpperCase() + text.slice(1);
}
