/** How the page stands to the service: being told, or since when not any more. */
export type Freshness = { kind: "connecting" } | { kind: "live" } | { kind: "cut"; since: number };
