import { useState } from "preact/hooks";
import type { Action, Cause, Disk, ObjectName } from "../api/schema";
import { fieldOf, type Operation } from "../api/document";
import { operationWords } from "../format/units";
import { useChoices } from "../live/candidates";
import type { Wanted } from "../live/change";
import { useOperations } from "../live/operations";
import { useReasons } from "../live/rights";
import { messages } from "../messages/messages";
import { ActionList } from "./action_list";
import { ChangeDialog } from "./change_dialog";

interface Props {
  disk: Disk;
  name: string;
  causes: Cause[];
  revision: number;
  onTaken: () => void;
}

const kRebuild = "rebuildVolume";
const kDisk = "diskId";
const kClear = "clearDisk";
const kSpare = "setDiskSpare";

const isForNew = ({ operation, word }: Action): boolean => operation === kClear || (operation === kSpare && word === "MARK");

/** What the new disk is for: a volume that health says is to be rebuilt, a spare, or nothing yet. */
export function TakeDisk({ disk, name, causes, revision, onTaken }: Props) {
  const [wanted, setWanted] = useState<Wanted | null>(null);
  const operation = useOperations().get(kRebuild);
  const waiting = causes.filter((cause) => cause.steps.some((step) => step.operation === kRebuild)).map((cause) => cause.object);
  return (
    <>
      {operation &&
        waiting.map((volume) => (
          <RebuildButton
            key={volume.id}
            operation={operation}
            volume={volume}
            disk={disk}
            revision={revision}
            onWanted={setWanted}
          />
        ))}
      {waiting.length === 0 && <p>{messages.replace.noneWaits}</p>}
      <ActionList
        type="disk"
        id={disk.id}
        name={name}
        revision={revision}
        offers={isForNew}
        onDone={(operationId) => operationId === kSpare && onTaken()}
      />
      <div class="locate">
        <button type="button" onClick={onTaken}>
          {messages.replace.leave}
        </button>
      </div>
      {/* The step goes on once the answer has been read. */}
      {wanted && <RebuildDialog wanted={wanted} onClose={() => setWanted(null)} onTaken={onTaken} />}
    </>
  );
}

interface ButtonProps {
  operation: Operation;
  volume: ObjectName;
  disk: Disk;
  revision: number;
  onWanted: (wanted: Wanted) => void;
}

function RebuildButton({ operation, volume, disk, revision, onWanted }: ButtonProps) {
  const wanted: Wanted = { operation: kRebuild, type: volume.type, id: volume.id ?? "", name: volume.name, given: {} };
  const { isAsking, items } = useChoices(operation, fieldOf(operation, kDisk), wanted, wanted.given, revision);
  const candidate = items.find((item) => item.value === disk.id);
  const reason = useReasons()(kRebuild);
  const words = reason ?? (candidate ? candidate.words : messages.replace.noCandidate(volume.name));
  return (
    <div class="locate">
      <button
        type="button"
        class="primary"
        disabled={reason !== null || !candidate?.allowed}
        onClick={() => onWanted({ ...wanted, given: { [kDisk]: disk.id } })}
      >
        {operationWords(kRebuild)}: {volume.name} …
      </button>
      {!isAsking && words && <span class="muted">{words}</span>}
    </div>
  );
}

function RebuildDialog({ wanted, onClose, onTaken }: { wanted: Wanted; onClose: () => void; onTaken: () => void }) {
  const [isDone, setDone] = useState(false);
  const close = (): void => {
    onClose();
    if (isDone) onTaken();
  };
  return <ChangeDialog wanted={wanted} onClose={close} onDone={() => setDone(true)} />;
}
