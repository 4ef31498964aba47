// The picture of a machine of 1,000 disks: how long the longest frame takes in a trace of the browser.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import path from "node:path";
import { onOneHost } from "../../web/stage.mjs";

const kDisks = 1000;
const kBound = 50; // milliseconds
const kTool = path.join(path.dirname(process.env.MIRN_HOST), "mirn-scenario");
const machine = JSON.parse(execFileSync(kTool, ["--devices", String(kDisks)], { maxBuffer: 1 << 28 }));
const story = onOneHost({ machine, clockSpeed: 0 });

/** The tasks of the page's main thread while something is done, in milliseconds, the longest first. */
async function tasksOf(tab, act) {
  const session = await tab.context.newCDPSession(tab.page);
  const events = [];
  session.on("Tracing.dataCollected", ({ value }) => events.push(...value));
  const isOver = new Promise((resolve) => session.once("Tracing.tracingComplete", resolve));
  await session.send("Tracing.start", {
    transferMode: "ReportEvents",
    traceConfig: { includedCategories: ["toplevel", "disabled-by-default-devtools.timeline", "devtools.timeline"] },
  });
  await act();
  await session.send("Tracing.end");
  await isOver;
  const main = new Set(
    events.filter(({ name, args }) => name === "thread_name" && args.name === "CrRendererMain").map(({ pid, tid }) => `${pid} ${tid}`),
  );
  const tasks = events.filter(({ name, ph, pid, tid }) => name === "RunTask" && ph === "X" && main.has(`${pid} ${tid}`));
  assert.ok(tasks.length > 0, "the trace tells of tasks");
  return tasks.map(({ dur }) => dur / 1000).sort((one, other) => other - one);
}

const frame = (tab) => tab.page.evaluate(() => new Promise((resolve) => requestAnimationFrame(() => setTimeout(resolve))));

// What is to be done is worked out first: what the trace tells of is the page's own.
const kDeeds = {
  async scroll(tab) {
    return async () => {
      for (let turn = 0; turn < 30; turn += 1) {
        await tab.page.mouse.wheel(0, turn < 20 ? 300 : -500);
        await frame(tab);
      }
    };
  },

  async hover(tab) {
    const seen = await tab.page.locator("[data-disk]").evaluateAll((all) =>
      all.map((each) => each.getBoundingClientRect()).filter(({ top, bottom }) => top > 0 && bottom < innerHeight).map(({ x, y }) => [x + 9, y + 9]),
    );
    assert.ok(seen.length > 20);
    return async () => {
      for (const [x, y] of seen.slice(0, 30)) {
        await tab.page.mouse.move(x, y);
        await frame(tab);
      }
    };
  },

  async takeIn(tab, host) {
    const [disk] = (await host.ask("GET", "mirn/enddevices")).filter((each) => each.arrayId === null && each.state === "NORMAL");
    await tab.page.evaluate((serialNumber) => {
      const tile = document.querySelector(`[data-disk="${serialNumber}"]`);
      window.taken = new Promise((resolve) => new MutationObserver(resolve).observe(tile, { childList: true, subtree: true }));
    }, disk.serialNumber);
    return async () => {
      await host.befall("fail-disk", disk.id);
      await tab.page.evaluate(() => window.taken);
      await frame(tab);
    };
  },
};

story(`a machine of ${kDisks} disks is scrolled, pointed at and changed within ${kBound} ms a frame`, async ({ host, signedIn }) => {
  const tab = await signedIn("observe", { viewport: { width: 1280, height: 800 } });
  await tab.visit("machine");
  await tab.see("[data-controller]");
  await tab.see("[data-freshness=live]");
  await tab.settled();
  assert.equal(await tab.page.locator("[data-disk]").count(), (await host.ask("GET", "mirn/enddevices")).length);
  const told = {};
  for (const [name, prepare] of Object.entries(kDeeds)) {
    const act = await prepare(tab, host);
    await frame(tab);
    told[name] = await tasksOf(tab, act);
    console.log(`${name}: longest tasks ${told[name].slice(0, 5).map(Math.round).join(", ")} ms of ${told[name].length}`);
  }
  for (const [name, [longest]] of Object.entries(told)) assert.ok(longest < kBound, `${name}: ${longest} ms`);
});
