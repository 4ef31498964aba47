// What did not change stays the very object that it was, so that whoever compares objects alone finds nothing to do.
import { useMemo, useRef } from "preact/hooks";

type Fields = Record<string, unknown>;

const isObject = (value: unknown): value is Fields => typeof value === "object" && value !== null && !Array.isArray(value);

const idOf = (value: unknown): unknown => (isObject(value) ? value.id : undefined);

/**
 * `before` where `now` is equal to it; else `now`, which nobody else may have yet, with the parts of `before` that are equal in
 * place of its own. Objects of a list are found by their id.
 */
export function shared<Value>(before: unknown, now: Value): Value {
  if (Object.is(before, now)) return now;
  if (Array.isArray(before) && Array.isArray(now)) return (sharesList(before, now) ? before : now) as Value;
  if (isObject(before) && isObject(now)) return (sharesFields(before, now) ? before : now) as Value;
  return now;
}

function sharesList(before: unknown[], now: unknown[]): boolean {
  let isSame = now.length === before.length;
  let known: Map<unknown, unknown> | undefined;
  const counterpartOf = (part: unknown, place: number): unknown => {
    const id = idOf(part);
    if (idOf(before[place]) === id) return before[place];
    known ??= new Map(before.map((each) => [idOf(each), each]));
    return known.get(id);
  };
  now.forEach((part, place) => {
    now[place] = shared(counterpartOf(part, place), part);
    isSame &&= Object.is(now[place], before[place]);
  });
  return isSame;
}

function sharesFields(before: Fields, now: Fields): boolean {
  const names = Object.keys(now);
  let isSame = names.length === Object.keys(before).length;
  for (const name of names) {
    now[name] = shared(before[name], now[name]);
    isSame &&= Object.is(now[name], before[name]) && name in before;
  }
  return isSame;
}

/** What is made anew of a machine when that is another, with all that stays as it was. */
export function useShared<Value>(make: () => Value, of: unknown): Value {
  const last = useRef<Value>();
  return useMemo(() => (last.current = shared(last.current, make())), [of]);
}
