import { useEffect, useState } from "preact/hooks";
import { kPages, type Place } from "../live/place";
import { messages } from "../messages/messages";

/** The pages: a row of links; on a narrow window one button that opens them. */
export function PageMenu({ place }: { place: Place }) {
  const [isOpen, setOpen] = useState(false);
  useEffect(() => setOpen(false), [place]);
  return (
    <nav aria-label={messages.navigation} onKeyDown={(event) => event.key === "Escape" && setOpen(false)}>
      <button
        type="button"
        class="menu-button"
        aria-expanded={isOpen}
        aria-controls="page-links"
        onClick={() => setOpen(!isOpen)}
      >
        {messages.pages[place.page]} <span aria-hidden="true">{isOpen ? "▴" : "▾"}</span>
      </button>
      <ul id="page-links" class={`plain ${isOpen ? "is-open" : ""}`}>
        {kPages.map((page) => (
          <li key={page}>
            <a href={`#/${page}`} aria-current={place.page === page ? "page" : undefined}>
              {messages.pages[page]}
            </a>
          </li>
        ))}
      </ul>
    </nav>
  );
}
