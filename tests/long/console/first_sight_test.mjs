// A hundred faults, one after the other: how long each takes to be on the first page.
import assert from "node:assert/strict";
import { FirstSight } from "../../web/first_sight.mjs";
import { calmMachine, kLooseDisks } from "../../web/machines.mjs";
import { onOneHost } from "../../web/stage.mjs";

const kRounds = 20;
const kBound = 2000; // milliseconds
const story = onOneHost({ machine: calmMachine(), clockSpeed: 0 });

story(`${kRounds * kLooseDisks.length} faults: each is on the first page within ${kBound} ms`, async ({ host, open }) => {
  const tab = await open();
  const sight = await FirstSight.prepare(tab);
  await tab.page.goto(await host.signInAddress("observe"));
  const times = [];
  for (let round = 0; round < kRounds; round += 1) {
    for (const serial of kLooseDisks) {
      await tab.seeCalm();
      const disk = await host.disk(serial);
      const { cause, sinceAsked } = await sight.of("fail-disk", disk);
      times.push(sinceAsked);
      await host.ask("PUT", `mirn/disks/${disk.id}/marknormal`);
      await tab.seeNoCauses(cause);
    }
  }
  times.sort((one, other) => one - other);
  const at = (share) => Math.round(times[Math.floor((times.length - 1) * share)]);
  console.log(`from the request to the page: median ${at(0.5)} ms, 95 of 100 within ${at(0.95)} ms, the longest ${at(1)} ms`);
  assert.ok(at(1) < kBound);
});
