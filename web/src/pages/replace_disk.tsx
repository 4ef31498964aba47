import { useEffect } from "preact/hooks";
import { forget, useKept } from "../live/kept";
import { revisionOf } from "../live/machine_context";
import type { Machine, Picture } from "../live/picture";
import { begun, keptAt, lostOthers, type Replacement, stepOf } from "../live/replacement";
import { messages } from "../messages/messages";
import { LostOthers } from "../parts/lost_others";
import { ReplaceStep } from "../parts/replace_step";
import { ReplaceSteps } from "../parts/replace_steps";

/** A disk is replaced step by step; the page goes on by itself when the machine shows that a step is done. */
export function ReplaceDiskPage({ picture, diskId }: { picture: Picture; diskId: string }) {
  const { machine } = picture;
  return (
    <>
      <h1>{messages.pages.replace}</h1>
      {machine ? (
        <Guide key={diskId} picture={picture} machine={machine} diskId={diskId} />
      ) : (
        <p class="muted">{messages.loading}</p>
      )}
    </>
  );
}

function Guide({ picture, machine, diskId }: { picture: Picture; machine: Machine; diskId: string }) {
  const [kept, keep] = useKept<Replacement | null>(keptAt(diskId), begun(machine, diskId));
  useEffect(() => {
    if (kept) keep(kept); // a reload finds those that were there at the begin
  }, []);
  if (!kept) return <p class="refusal">{messages.machine.gone}</p>;
  if (kept.portId === null) return <p class="refusal">{messages.replace.noBay(kept.name)}</p>;
  const lost = lostOthers(machine, kept);
  const step = stepOf(machine, kept);
  const finish = (): void => {
    forget(keptAt(diskId));
    location.hash = "#/overview";
  };
  return (
    <>
      <p>{messages.replace.what(kept.name, kept.bay)}</p>
      {lost.length > 0 && <LostOthers replacement={kept} lost={lost} onKept={keep} />}
      <div class="guide">
        <ReplaceSteps step={step} />
        {lost.length === 0 && (
          <ReplaceStep
            machine={machine}
            replacement={kept}
            step={step}
            causes={picture.health?.causes ?? []}
            revision={revisionOf(picture)}
            onKept={keep}
            onFinish={finish}
          />
        )}
      </div>
    </>
  );
}
