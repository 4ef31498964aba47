import { useState } from "preact/hooks";
import { disksOf, type NamedObject } from "../live/objects";
import type { Machine } from "../live/picture";
import type { Right } from "../live/rights";
import type { Simulator } from "../live/simulator";
import { messages } from "../messages/messages";
import { DiskSelect } from "./disk_select";

const t = messages.simulator;
const kHour = 3_600_000; // milliseconds
const kSpans: [string, number][] = [
  [t.hour, kHour],
  [t.day, 24 * kHour],
  [t.month, 30 * 24 * kHour],
];
const kSpeeds = [0, 1, 60, 3600];

interface Props {
  machine: Machine | null;
  simulator: Simulator;
  right: Right;
}

/** Disks that fail, are pulled and put back; time that passes. */
export function SimulatorControls({ machine, simulator, right }: Props) {
  const { act, out, isBusy } = simulator;
  const isOff = isBusy || right.words !== null;
  return (
    <div class="stacked">
      {right.words && <p class="muted">{right.words}</p>}
      <DiskLine
        id="simulated-disk"
        label={t.disk}
        disks={disksOf(machine)}
        controls={["fail-disk", "pull-disk", "raise-smart-event"]}
        isOff={isOff}
        onAct={(name, id) => act({ name, body: { disk: serialOf(machine, id) } })}
      />
      {out.length > 0 && (
        <DiskLine
          id="pulled-disk"
          label={t.pulled}
          disks={out.map((serial) => ({ id: serial, name: serial }))}
          controls={["insert-disk", "insert-blank-disk"]}
          isOff={isOff}
          onAct={(name, disk) => act({ name, body: { disk } })}
        />
      )}
      <div class="field">
        <strong id="time-label">{t.time}</strong>
        <div class="locate" role="group" aria-labelledby="time-label">
          {kSpans.map(([label, milliseconds]) => (
            <button
              key={label}
              type="button"
              disabled={isOff}
              onClick={() => act({ name: "advance-clock", body: { milliseconds } })}
            >
              {label}
            </button>
          ))}
          {kSpeeds.map((speed) => (
            <button
              key={speed}
              type="button"
              disabled={isOff}
              onClick={() => act({ name: "set-clock-speed", body: { speed } })}
            >
              {t.speed(speed)}
            </button>
          ))}
        </div>
      </div>
    </div>
  );
}

/** The published id ends with a disk that is pulled; its serial number stays. */
const serialOf = (machine: Machine | null, id: string): string =>
  machine?.disks.find((disk) => disk.id === id)?.serialNumber ?? id;

interface LineProps {
  id: string;
  label: string;
  disks: Pick<NamedObject, "id" | "name">[];
  controls: string[];
  isOff: boolean;
  onAct: (control: string, disk: string) => void;
}

function DiskLine({ id, label, disks, controls, isOff, onAct }: LineProps) {
  const [chosen, setChosen] = useState("");
  const disk = disks.find((each) => each.id === chosen)?.id ?? "";
  return (
    <DiskSelect id={id} label={label} disks={disks} chosen={disk} isOff={isOff} onChosen={setChosen}>
      {controls.map((control) => (
        <button key={control} type="button" disabled={isOff || disk === ""} onClick={() => onAct(control, disk)}>
          {t.controls[control]}
        </button>
      ))}
    </DiskSelect>
  );
}
