// What somebody has begun and is to find again after a reload. It stays with this tab, until it signs out.
import { useState } from "preact/hooks";

export function useKept<Kept>(key: string, initial: Kept): [Kept, (value: Kept) => void] {
  const [value, setValue] = useState<Kept>(() => read(key) ?? initial);
  const keep = (next: Kept): void => {
    sessionStorage.setItem(key, JSON.stringify(next));
    setValue(next);
  };
  return [value, keep];
}

export const forget = (key: string): void => sessionStorage.removeItem(key);

function read<Kept>(key: string): Kept | null {
  try {
    return JSON.parse(sessionStorage.getItem(key) ?? "null") as Kept | null;
  } catch {
    return null; // another version of the console has kept it
  }
}
