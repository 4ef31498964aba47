// Answers that a page asks for by itself, beside the picture that all pages share.
import { useCallback, useEffect, useState } from "preact/hooks";
import { ask, Refusal } from "../api/client";
import { messages } from "../messages/messages";

/** What went wrong, in the service's words where there are some. */
export const wordsOf = (failure: unknown): string =>
  failure instanceof Refusal && failure.status !== 0 ? failure.message : messages.noAnswer;

const isGivenUp = (failure: unknown): boolean => failure instanceof DOMException && failure.name === "AbortError";

export interface Answered<Body> {
  body: Body | null; // the last good one
  words: string | null; // why there is none newer
}

/** The answer to a read, asked for anew where the path or `version` becomes another; null asks for nothing. */
export function useAnswer<Body>(path: string | null, version: unknown = null): Answered<Body> {
  const [answered, setAnswered] = useState<Answered<Body>>({ body: null, words: null });
  useEffect(() => {
    if (path === null) return undefined;
    const end = new AbortController();
    ask<Body>(path, { signal: end.signal }).then(
      (body) => setAnswered({ body, words: null }),
      (failure: unknown) => {
        if (!isGivenUp(failure)) setAnswered((last) => ({ body: last.body, words: wordsOf(failure) }));
      },
    );
    return () => end.abort();
  }, [path, version]);
  return answered;
}

interface Page<Item> {
  items: Item[];
  next: string | null;
}

export interface Paged<Item> {
  items: Item[] | null; // null before the first page
  hasMore: boolean;
  words: string | null;
  isBusy: boolean;
  more: () => void;
}

const withCursor = (path: string, cursor: string): string =>
  `${path}${path.includes("?") ? "&" : "?"}cursor=${encodeURIComponent(cursor)}`;

/** A list that comes in pages. Another path or `version` begins it anew. */
export function usePaged<Item>(path: string, version: unknown = null): Paged<Item> {
  const [pages, setPages] = useState<Page<Item> | null>(null);
  const [words, setWords] = useState<string | null>(null);
  const [isBusy, setBusy] = useState(true);
  const fetchPage = useCallback(
    (from: Page<Item> | null, signal?: AbortSignal): void => {
      setBusy(true);
      const wanted = from?.next ? withCursor(path, from.next) : path;
      ask<Page<Item>>(wanted, signal ? { signal } : {}).then(
        (page) => {
          setPages({ items: [...(from?.items ?? []), ...page.items], next: page.next });
          setWords(null);
          setBusy(false);
        },
        (failure: unknown) => {
          if (isGivenUp(failure)) return;
          setWords(wordsOf(failure));
          setBusy(false);
        },
      );
    },
    [path],
  );
  useEffect(() => {
    const end = new AbortController();
    fetchPage(null, end.signal);
    return () => end.abort();
  }, [fetchPage, version]);
  return {
    items: pages?.items ?? null,
    hasMore: pages?.next != null,
    words,
    isBusy,
    more: () => fetchPage(pages),
  };
}
