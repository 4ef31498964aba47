// Where in the console somebody is, as the fragment of the address tells.
import { useEffect, useState } from "preact/hooks";

/** The pages, in the order in which they are offered; the first is where one begins. */
export const kPages = [
  "overview",
  "machine",
  "jobs",
  "alarms",
  "history",
  "readiness",
  "whatif",
  "settings",
  "access",
  "about",
] as const;
/** Those that lead through something, reached from where it is offered. */
export const kGuides = ["create", "replace"] as const;
export type Page = (typeof kPages)[number] | (typeof kGuides)[number];

export interface Place {
  page: Page;
  object: { type: string; id: string } | null; // what the page is about, where it is about one
  rest: string[]; // of the address, behind the page
}

export function placeOf(fragment: string): Place {
  const [name, ...rest] = fragment.replace(/^#\/?/, "").split("/");
  const page = [...kPages, ...kGuides].find((each) => each === name);
  if (!page || page === "overview") return { page: "overview", object: null, rest: [] };
  const [type, id] = rest;
  return { page, object: type && id ? { type, id } : null, rest };
}

export function usePlace(): Place {
  const [place, setPlace] = useState(() => placeOf(location.hash));
  useEffect(() => {
    const follow = (): void => setPlace(placeOf(location.hash));
    window.addEventListener("hashchange", follow);
    return () => window.removeEventListener("hashchange", follow);
  }, []);
  return place;
}
