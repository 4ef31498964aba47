// How long the first page takes: from the address to what is wrong, in a browser that has nothing of it yet.
import assert from "node:assert/strict";
import { onOneHost } from "../../web/stage.mjs";

const story = onOneHost({ clockSpeed: 0 });
const kTimes = 11;
const kBound = 1000; // milliseconds

/** Notes when the first cause is in the page, and when the frame with it is due. */
function noteSight() {
  const watch = new MutationObserver(() => {
    if (globalThis.seen || !document.querySelector("[data-cause]")) return;
    globalThis.seen = {};
    watch.disconnect();
    requestAnimationFrame(() => setTimeout(() => (globalThis.seen.at = performance.now())));
  });
  watch.observe(document, { childList: true, subtree: true });
}

const middleOf = (all) => [...all].sort((one, other) => one - other)[Math.floor(all.length / 2)];

story(`what is wrong is painted within a second of the address, in the middle of ${kTimes} times`, async ({ host, open }) => {
  const paints = [];
  const sights = [];
  for (let time = 0; time < kTimes; time += 1) {
    const tab = await open(); // with a cache of its own
    await tab.context.addInitScript(noteSight);
    await tab.page.goto(await host.signInAddress("observe"));
    await tab.page.waitForFunction(() => globalThis.seen?.at);
    paints.push(await tab.page.evaluate(() => performance.getEntriesByName("first-contentful-paint")[0].startTime));
    sights.push(await tab.page.evaluate(() => globalThis.seen.at));
    await tab.page.goto("about:blank");
  }
  const told = (all) => all.map(Math.round).join(", ");
  console.log(`first paint after ${told(paints)} ms, what is wrong after ${told(sights)} ms`);
  assert.ok(middleOf(sights) < kBound, `${middleOf(sights)} ms`);
});
