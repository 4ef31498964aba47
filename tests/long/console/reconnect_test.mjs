// The host goes and comes back, the stream is cut, the library refuses: the page says so, keeps what it last saw, and catches up
// by itself.
import assert from "node:assert/strict";
import { calmMachine } from "../../web/machines.mjs";
import { onOwnHosts } from "../../web/stage.mjs";
import { Line } from "./line.mjs";

const story = onOwnHosts({ clockSpeed: 0 });
const kDisk = "TB2T7790315";
const kReads = ["VexGetControllerInfo", "VexGetArrayInfo", "VexGetEndDeviceInfo", "VexGetPortInfo", "VexGetVolumeInfo"];
const kTurns = 2;

/** A mark that a reload would take away. */
const leaveMark = (tab) => tab.page.evaluate(() => void (globalThis.mark = true));
const hasMark = (tab) => tab.page.evaluate(() => globalThis.mark === true);

story("the host is stopped and started again: what is old is told as old, and what was missed is there", async ({ host, withToken }) => {
  const tab = await withToken();
  const cause = `disk-failed-${(await host.disk(kDisk)).id}`;
  await leaveMark(tab);
  tab.expectCut();
  await host.stop();
  await tab.see("[data-freshness=cut]");
  await tab.seeText(/Connection lost at .*; what you see is from then/);
  await tab.see("[data-severity=critical]"); // what it last saw
  await tab.requireAccessible();
  await host.start();
  // While the page still waits for its next try.
  await host.befall("fail-disk", kDisk);
  await tab.see("[data-freshness=live]");
  await tab.seeCauses(cause);
  await tab.gone("main [role=alert]");
  await tab.visit("history");
  await tab.page.locator("[data-row]", { hasText: kDisk }).first().waitFor();
  const missed = (await host.ask("GET", "history?limit=20")).items.map((entry) => String(entry.row));
  for (const row of missed) await tab.see(`[data-row="${row}"]`);
  assert.ok(await hasMark(tab), "the page was loaded anew");
});

story("the host is killed twice, each page comes back by itself", async ({ host, withToken }) => {
  const tab = await withToken();
  await leaveMark(tab);
  tab.expectCut();
  for (const place of ["machine", "jobs"]) {
    await tab.visit(place);
    await tab.see("main h1");
    await host.crash();
    await tab.see("[data-freshness=cut]");
    await host.start();
    await tab.see("[data-freshness=live]");
    await tab.gone("main [role=alert]");
  }
  assert.ok(await hasMark(tab), "the page was loaded anew");
});

story("only the line is cut: the session lasts, and the page catches up with what was missed", async ({ host, open }) => {
  const line = new Line(host.port);
  await line.join();
  const tab = await open();
  const cause = `disk-failed-${(await host.disk(kDisk)).id}`;
  await tab.page.goto(line.address(await host.signInAddress("observe")));
  await tab.see("[data-freshness=live]");
  await tab.see("[data-severity]");
  await leaveMark(tab);
  tab.expectCut();
  await line.cut();
  await tab.see("[data-freshness=cut]");
  await host.befall("fail-disk", kDisk);
  assert.equal(await tab.cause(cause).count(), 0);
  await line.join();
  await tab.see("[data-freshness=live]");
  await tab.seeCauses(cause);
  assert.ok(await hasMark(tab), "the page was loaded anew");
  await tab.page.close();
  await line.cut();
});

story(
  `the library refuses to tell of something and comes back, ${kTurns * kReads.length} times: each time it is told, and goes by itself`,
  async ({ host, signedIn }) => {
    const tab = await signedIn("observe");
    for (let turn = 0; turn < kTurns; turn += 1) {
      for (const operation of kReads) {
        await tab.seeCalm();
        await host.failCalls(operation);
        await tab.see("[data-cause^=picture-old]");
        await host.clearFaults();
        await tab.gone("[data-cause^=picture-old]");
      }
    }
    await tab.seeCalm();
    await tab.visit("machine");
    await tab.see(`[data-disk="${kDisk}"]`);
  },
  { machine: calmMachine() },
);
