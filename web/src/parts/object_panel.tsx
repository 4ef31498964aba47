import { useEffect, useRef } from "preact/hooks";
import { type Fact, factsOf } from "../format/facts";
import { portOfDisk } from "../live/bays";
import { objectOf } from "../live/objects";
import type { Machine } from "../live/picture";
import { messages } from "../messages/messages";
import { ActionList } from "./action_list";
import { LocateButton } from "./locate_button";

interface Props {
  machine: Machine;
  type: string;
  id: string;
  revision: number;
}

/** What is known of one object. */
export function ObjectPanel({ machine, type, id, revision }: Props) {
  const title = useRef<HTMLHeadingElement>(null);
  useEffect(() => title.current?.focus(), [type, id]);
  const found = objectOf(machine, type, id);
  const port = type === "disk" ? portOfDisk(machine, id) : null;
  // Enclosures and drives for other media stand among the disks; the service does nothing with them.
  const isOther = machine.disks.some((disk) => disk.id === id && disk.deviceType !== "DISK");
  return (
    <aside class="card panel" aria-labelledby="panel-title" data-panel={type}>
      <div class="panel-head">
        <h2 id="panel-title" ref={title} tabIndex={-1}>
          {found?.name ?? messages.machine.gone}
        </h2>
        <a href="#/machine">{messages.machine.close}</a>
      </div>
      {found && port && <LocateButton key={port.id} portId={port.id} />}
      {found && type === "disk" && !isOther && <a href={`#/replace/${id}`}>{messages.replace.begin}</a>}
      {!isOther && <ActionList key={`${type}/${id}`} type={type} id={id} name={found?.name} revision={revision} />}
      {found && (
        <p>
          <a href={`#/history/${type}/${id}`}>{messages.history.of}</a>
        </p>
      )}
      {found && (
        <dl class="facts">
          {factsOf(found.form).map((fact) => (
            <div key={fact.key}>
              <dt>{fact.label}</dt>
              <dd>
                <FactText fact={fact} machine={machine} />
              </dd>
            </div>
          ))}
        </dl>
      )}
    </aside>
  );
}

/** Others by their names, leading to them. */
function FactText({ fact, machine }: { fact: Fact; machine: Machine }) {
  const others = fact.ids.map((id) => {
    const type = ["controller", "array", "volume", "disk"].find((each) => objectOf(machine, each, id));
    return type ? { type, id, name: objectOf(machine, type, id)?.name ?? "" } : null;
  });
  if (others.length === 0 || others.includes(null)) return <>{fact.text}</>;
  return (
    <>
      {others.map((other, index) => (
        <span key={other?.id}>
          {index > 0 && ", "}
          <a href={`#/machine/${other?.type}/${other?.id}`}>{other?.name}</a>
        </span>
      ))}
    </>
  );
}
