import { useMemo } from "preact/hooks";
import type { Controller } from "../api/schema";
import type { Bay } from "../live/bays";
import { messages } from "../messages/messages";
import { DiskTile } from "./disk_tile";
import type { Looks } from "../live/looks";

interface Props {
  controller: Controller;
  bays: Bay[];
  looks: Looks;
}

/** A controller with its bays; drawn anew only where something of it looks different, since others are pointed at often. */
export function ControllerCard(props: Props) {
  const { controller, bays, looks } = props;
  const signs = bays.map(({ disk }) => looks.signOf("disk", disk?.id, disk?.state)).join();
  return useMemo(() => card(props), [controller, bays, looks.lookOf("controller", controller.id), signs]);
}

function card({ controller, bays, looks }: Props) {
  const title = `controller-${controller.id}`;
  return (
    <section class={`card ${looks.lookOf("controller", controller.id)}`} aria-labelledby={title} data-controller={controller.id}>
      <h2 id={title}>
        <a href={`#/machine/controller/${controller.id}`}>{controller.name}</a>
      </h2>
      <p class="muted">{messages.machine.controller(controller.mode, controller.version, bays.length)}</p>
      <ul class="plain tiles">
        {bays.map((bay) => (
          <DiskTile
            key={bay.key}
            bay={bay}
            severity={looks.severityOf("disk", bay.disk?.id, bay.disk?.state)}
            look={looks.lookOf("disk", bay.disk?.id)}
            onPoint={(id) => looks.point("disk", id)}
          />
        ))}
      </ul>
    </section>
  );
}
