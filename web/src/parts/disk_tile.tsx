import { useMemo } from "preact/hooks";
import type { Severity } from "../api/schema";
import { size, words } from "../format/units";
import type { Bay } from "../live/bays";
import { messages } from "../messages/messages";
import { SeverityMark } from "./severity_mark";

interface Props {
  bay: Bay;
  severity: Severity;
  look: string;
  onPoint: (id: string | null) => void;
}

/** A bay with its disk; drawn anew only where what it shows has changed, since there may be thousands. */
export function DiskTile(props: Props) {
  const { bay, severity, look } = props;
  const { id, serialNumber, totalSize, usage, state } = bay.disk ?? {};
  return useMemo(() => tile(props), [bay.address, id, serialNumber, totalSize, usage, state, severity, look]);
}

/** What a disk is there for in words and by its edge, how it is by a shape. */
function tile({ bay, severity, look, onPoint }: Props) {
  const { disk } = bay;
  if (!disk) {
    return (
      <li class="tile tile-free">
        <span class="muted number">{bay.address}</span>
        <span class="muted">{messages.machine.free}</span>
      </li>
    );
  }
  return (
    <li class={`tile usage-${disk.usage.toLowerCase().replaceAll("_", "-")} ${look}`}>
      <a
        href={`#/machine/disk/${disk.id}`}
        data-disk={disk.serialNumber}
        onMouseEnter={() => onPoint(disk.id)}
        onMouseLeave={() => onPoint(null)}
        onFocus={() => onPoint(disk.id)}
        onBlur={() => onPoint(null)}
      >
        <span class="tile-head">
          <span class="muted number">{bay.address}</span>
          <SeverityMark severity={severity} size={16} />
        </span>
        <strong>{disk.serialNumber}</strong>
        <span>
          {disk.totalSize ? `${size(disk.totalSize)} · ` : ""}
          {words(disk.usage)}
        </span>
        {disk.state !== "NORMAL" && <span class="tile-state">{words(disk.state)}</span>}
      </a>
    </li>
  );
}
