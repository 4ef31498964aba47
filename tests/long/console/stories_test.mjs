// All twelve stories of a machine, by clicks.
import { kMachineStories } from "../../web/machine_stories.mjs";
import { calmMachine } from "../../web/machines.mjs";
import { onOwnHosts } from "../../web/stage.mjs";

const story = onOwnHosts({ machine: calmMachine(), clockSpeed: 0 });

for (const [name, act] of Object.entries(kMachineStories)) story(name, act);
