import type { ComponentChildren } from "preact";
import type { Caller, Service } from "../api/schema";
import type { Freshness } from "../live/freshness";
import { messages } from "../messages/messages";
import type { Place } from "../live/place";
import { FreshnessMark } from "./freshness_mark";
import { LanguageChoice } from "./language_choice";
import { PageMenu } from "./page_menu";

interface Props {
  place: Place;
  caller: Caller;
  service: Service | null;
  freshness: Freshness;
  onSignOut: () => void;
  drawer: ComponentChildren;
  children: ComponentChildren;
}

/** What is around every page: where one is, whether it is live, who one is. */
export function Shell({ place, caller, service, freshness, onSignOut, drawer, children }: Props) {
  return (
    <>
      <a class="skip" href="#content" onClick={toContent}>
        {messages.skip}
      </a>
      <header>
        <div class="bar">
          <span class="brand">{messages.product}</span>
          <span class="space" />
          <span role="status">
            <FreshnessMark freshness={freshness} />
          </span>
          <span class="muted" data-role={caller.role}>
            {messages.signedInAs(caller.role)}
          </span>
          <LanguageChoice />
          <button type="button" class="quiet" onClick={onSignOut}>
            {messages.signOut}
          </button>
          <PageMenu place={place} />
        </div>
        {service?.library?.simulated && (
          <p class="banner" role="note">
            {messages.simulated}
          </p>
        )}
        {drawer}
      </header>
      <main id="content" tabIndex={-1}>
        {children}
      </main>
    </>
  );
}

/** The fragment is where pages are told apart, so the usual jump is done by hand. */
function toContent(event: Event): void {
  event.preventDefault();
  document.getElementById("content")?.focus();
}
