import type { ComponentChildren } from "preact";
import type { Paged } from "../live/answer";
import { messages } from "../messages/messages";

interface Props<Item> {
  paged: Paged<Item>;
  none: string; // what is said of an empty list
  children: (items: Item[]) => ComponentChildren;
}

/** A list that comes in pages, with a button for the next one; what the service refuses stands there in its words. */
export function PagedList<Item>({ paged, none, children }: Props<Item>) {
  const { items, hasMore, words, isBusy, more } = paged;
  return (
    <>
      {words && (
        <p class="refusal" role="alert">
          {words}
        </p>
      )}
      {items === null && !words && <p class="muted">{messages.paged.looking}</p>}
      {items?.length === 0 && <p class="muted">{hasMore ? messages.paged.goesOn : none}</p>}
      {items !== null && items.length > 0 && children(items)}
      {hasMore && (
        <p>
          <button type="button" disabled={isBusy} onClick={more}>
            {isBusy ? messages.paged.looking : messages.paged.more}
          </button>
        </p>
      )}
    </>
  );
}
