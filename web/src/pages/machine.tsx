import { allBays } from "../live/bays";
import { kService } from "../live/change";
import { kCreate } from "../live/draft";
import { looksOf } from "../live/looks";
import type { Machine, Picture } from "../live/picture";
import type { Place } from "../live/place";
import { usePointed } from "../live/pointed";
import { relatedTo } from "../live/relations";
import { useReasons } from "../live/rights";
import { useShared } from "../live/sharing";
import { messages } from "../messages/messages";
import { ActionList } from "../parts/action_list";
import { ArrayCard } from "../parts/array_card";
import { ControllerCard } from "../parts/controller_card";
import { ObjectPanel } from "../parts/object_panel";
import { RightButton } from "../parts/right_button";

const volumesOfArrays = ({ arrays, volumes }: Machine) =>
  arrays.map(({ id }) => volumes.filter((each) => each.arrayId === id));

const kLarge = 200; // disks; of fewer all is drawn at once

/** Controllers with their bays, arrays with their volumes; who belongs to whom. */
export function MachinePage({ picture, place }: { picture: Picture; place: Place }) {
  const [pointed, point] = usePointed();
  const reason = useReasons()(kCreate.operation);
  const { machine, health } = picture;
  const bays = useShared(() => (machine ? allBays(machine) : []), machine);
  const volumes = useShared(() => (machine ? volumesOfArrays(machine) : []), machine);
  if (!machine) return <p class="muted">{messages.loading}</p>;
  const shown = pointed ?? place.object;
  const related = shown ? relatedTo(machine, shown.type, shown.id) : null;
  const looks = looksOf(health?.causes ?? [], related, point);
  return (
    <>
      <div class="page-head">
        <h1>{messages.pages.machine}</h1>
        {reason === null ? (
          <a class="button" href="#/create">
            {messages.create.begin}
          </a>
        ) : (
          <RightButton label={messages.create.begin} right={{ isThere: true, words: reason }} onPress={() => undefined} />
        )}
      </div>
      <div class={place.object ? "with-panel" : ""}>
        {place.object && (
          <ObjectPanel
            machine={machine}
            type={place.object.type}
            id={place.object.id}
            revision={health?.position.structure ?? 0}
          />
        )}
        <div class={machine.disks.length > kLarge ? "picture is-large" : "picture"}>
          {machine.controllers.map((controller, index) => (
            <ControllerCard
              key={controller.id}
              controller={controller}
              bays={bays[index] ?? []}
              looks={looks}
            />
          ))}
          {machine.arrays.map((array, index) => (
            <ArrayCard
              key={array.id}
              array={array}
              volumes={volumes[index] ?? []}
              looks={looks}
            />
          ))}
        </div>
      </div>
      {!place.object && (
        <div class="card">
          <ActionList type={kService} id={kService} name={messages.service} revision={health?.position.structure ?? 0} />
        </div>
      )}
    </>
  );
}
