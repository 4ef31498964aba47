import { sessionEnd } from "../api/session";
import type { Caller } from "../api/schema";
import { messages } from "../messages/messages";
import { CommandList } from "../parts/command_list";
import { MomentText } from "../parts/moment_text";

const t = messages.access;

/** Who is signed in, and how others are let in. */
export function AccessPage({ caller, onSignOut }: { caller: Caller; onSignOut: () => void }) {
  const end = sessionEnd();
  return (
    <>
      <h1>{messages.pages.access}</h1>
      <section class="card stacked" aria-labelledby="session-title">
        <h2 id="session-title">{t.session}</h2>
        <dl class="facts">
          <div>
            <dt>{t.name}</dt>
            <dd>{caller.name}</dd>
          </div>
          <div>
            <dt>{t.role}</dt>
            <dd>
              {caller.role}: {t.roles[caller.role]}
            </dd>
          </div>
          <div>
            <dt>{t.ends}</dt>
            <dd>{end === null ? t.endless : <MomentText at={end} />}</dd>
          </div>
        </dl>
        <div class="locate">
          <button type="button" onClick={onSignOut}>
            {t.end}
          </button>
        </div>
      </section>
      <section class="card stacked" aria-labelledby="tokens-title">
        <h2 id="tokens-title">{t.tokens}</h2>
        <p>{t.how}</p>
        <CommandList commands={t.commands} />
        <p class="muted">{t.counts}</p>
      </section>
    </>
  );
}
