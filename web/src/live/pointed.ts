// What is pointed at, by mouse or keys.
import { useCallback, useRef, useState } from "preact/hooks";
import type { Looks } from "./looks";

export type Pointed = { type: string; id: string } | null;

/** Told once a frame: whoever goes from one to the next leaves the one just before, and all would be drawn twice. */
export function usePointed(): [Pointed, Looks["point"]] {
  const [pointed, setPointed] = useState<Pointed>(null);
  const latest = useRef<Pointed>(null);
  const frame = useRef(0);
  const point = useCallback((type: string, id: string | null) => {
    latest.current = id === null ? null : { type, id };
    frame.current ||= requestAnimationFrame(() => {
      frame.current = 0;
      setPointed(latest.current);
    });
  }, []);
  return [pointed, point];
}
