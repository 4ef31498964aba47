// Requests to the host that the page came from. Addresses are relative to the page, so that it may stand anywhere.
import { token } from "./session";
import type { Problem } from "./schema";

/** What the service says when it does not do what it was asked for; `status` 0: it could not be asked. */
export class Refusal extends Error {
  constructor(
    readonly status: number,
    words: string,
    readonly errorId: string | null = null,
  ) {
    super(words);
  }
}

/** Called when the service does not know the token any more. */
let onStranger: () => void = () => undefined;
export const whenSignedOut = (act: () => void): void => {
  onStranger = act;
};

export interface Wishes {
  method?: string;
  body?: unknown;
  fields?: Record<string, string>;
  signal?: AbortSignal;
}

/** The answer to a request below `api/v1/`, whatever its status. */
export async function exchange(path: string, wishes: Wishes = {}): Promise<Response> {
  const fields: Record<string, string> = { ...wishes.fields };
  const known = token();
  if (known) fields["Authorization"] = `Bearer ${known}`;
  if (wishes.body !== undefined) fields["Content-Type"] = "application/json";
  const request: RequestInit = { method: wishes.method ?? "GET", headers: fields, cache: "no-store" };
  if (wishes.body !== undefined) request.body = JSON.stringify(wishes.body);
  if (wishes.signal) request.signal = wishes.signal;
  try {
    return await fetch(new URL(path === "" ? "api/v1" : `api/v1/${path}`, document.baseURI), request);
  } catch (failure) {
    if (failure instanceof DOMException && failure.name === "AbortError") throw failure;
    throw new Refusal(0, "");
  }
}

/** The value of a good answer; null of one without a body. Raises a `Refusal`. */
export async function ask<Body>(path: string, wishes: Wishes = {}): Promise<Body> {
  return bodyOf<Body>(await exchange(path, wishes));
}

/** A good answer's value with the tag by which the service knows it again; null: it gave none. */
export interface Tagged<Body> {
  tag: string | null;
  body: Body;
}

/** `known` itself where the service still has the same to tell. Raises a `Refusal`. */
export async function askAgain<Body>(path: string, known: Tagged<Body> | null, signal: AbortSignal): Promise<Tagged<Body>> {
  const answer = await exchange(path, { signal, fields: known?.tag ? { "If-None-Match": known.tag } : {} });
  if (known && answer.status === 304) return known;
  return { tag: answer.headers.get("ETag"), body: await bodyOf<Body>(answer) };
}

async function bodyOf<Body>(answer: Response): Promise<Body> {
  if (!answer.ok) throw await refusalOf(answer);
  if (answer.status === 204) return null as Body;
  try {
    return (await answer.json()) as Body;
  } catch (failure) {
    if (failure instanceof DOMException && failure.name === "AbortError") throw failure;
    throw new Refusal(0, ""); // it broke off
  }
}

export async function refusalOf(answer: Response): Promise<Refusal> {
  if (answer.status === 401 && token()) onStranger();
  const problem = (await answer.json().catch(() => ({}))) as Partial<Problem> & Record<string, unknown>;
  const words = problem.detail ?? problem.title ?? answer.statusText;
  const id = problem["errorId"] ?? problem["id"];
  return new Refusal(answer.status, String(words), typeof id === "string" ? id : null);
}
