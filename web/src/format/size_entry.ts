// Sizes as people tell them, and as the service takes them.
const kMebibyte = 1024 ** 2;

export const kUnits = { MB: 1000 ** 2, GB: 1000 ** 3, TB: 1000 ** 4, MiB: kMebibyte, GiB: 1024 ** 3, TiB: 1024 ** 4 };
export type Unit = keyof typeof kUnits;

/** Whole mebibytes, at most what was told; empty where it is no size. */
export function mebibytesOf(amount: string, unit: Unit): string {
  const count = Math.floor((Number(amount.trim().replace(",", ".")) * kUnits[unit]) / kMebibyte);
  return amount.trim() !== "" && Number.isSafeInteger(count) && count > 0 ? String(count) : "";
}

/** As it may have been told, in the greatest unit that keeps it whole. */
export function entryOf(mebibytes: string): { amount: string; unit: Unit } {
  const count = Number(mebibytes);
  if (!(count > 0)) return { amount: "", unit: "GB" };
  if (count % 1024 ** 2 === 0) return { amount: String(count / 1024 ** 2), unit: "TiB" };
  return count % 1024 === 0 ? { amount: String(count / 1024), unit: "GiB" } : { amount: mebibytes, unit: "MiB" };
}

export const bytesOfMebibytes = (mebibytes: string): string => String(Number(mebibytes) * kMebibyte);
