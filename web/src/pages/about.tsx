import { useState } from "preact/hooks";
import type { Role, Service, Version } from "../api/schema";
import { factsOf } from "../format/facts";
import { useAnswer } from "../live/answer";
import { useRight } from "../live/rights";
import { messages } from "../messages/messages";
import { DownloadButton } from "../parts/download_button";
import { FactList } from "../parts/fact_list";

const t = messages.about;

/** What serves here, in which versions, and where it is told in full. */
export function AboutPage({ service, role }: { service: Service | null; role: Role }) {
  const { body, words } = useAnswer<Version>("mirn/version");
  const right = useRight("getBundle", role);
  const [isMasked, setMasked] = useState(true);
  const { library, name, apiVersion } = service ?? {};
  return (
    <>
      <h1>{messages.pages.about}</h1>
      {words && (
        <p class="refusal" role="alert">
          {words}
        </p>
      )}
      <div class="columns">
        <section class="card" aria-labelledby="served-title">
          <h2 id="served-title">{t.served}</h2>
          <FactList facts={factsOf({ plugin: name ?? "", apiVersion: apiVersion ?? "" })} />
          <h3>{t.versions}</h3>
          <FactList facts={factsOf(body ?? {})} />
          <h3>{t.library}</h3>
          {library ? <FactList facts={factsOf(library)} /> : <p class="muted">{messages.unknown}</p>}
        </section>
        <section class="card" aria-labelledby="told-title">
          <h2 id="told-title">{t.told}</h2>
          <p>
            <a href="docs">{t.docs}</a>
          </p>
          <p>
            <a href="openapi.json">{t.document}</a>
          </p>
          <h3>{t.licences}</h3>
          <ul class="lines">
            {t.licenceLines.map((line) => (
              <li key={line}>{line}</li>
            ))}
          </ul>
          <h3>{t.bundle}</h3>
          <p>{t.bundleHow}</p>
          <label class="tick">
            <input
              type="checkbox"
              checked={isMasked}
              disabled={right.words !== null}
              onChange={(event) => setMasked(event.currentTarget.checked)}
            />{" "}
            {t.mask}
          </label>
          <DownloadButton
            label={t.bundleButton}
            path={isMasked ? "bundle?mask=true" : "bundle"}
            file="mirn-bundle.tar.gz"
            right={right}
          />
        </section>
      </div>
    </>
  );
}
