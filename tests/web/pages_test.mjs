// The pages beside the two first ones, in a browser before the running host. All waits are for what comes, none for a time.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { after, before, test } from "node:test";
import { Host, startBrowser, Tab } from "./browser.mjs";

let browser;
let host;

before(async () => {
  host = new Host(process.env.MIRN_HOST, process.env.MIRN_MODULE);
  browser = await startBrowser();
  await host.start();
});
after(async () => {
  await browser?.close();
  await host?.end();
});

const signedIn = (role, options) => Tab.signedIn(browser, host, role, options);

test("on a telephone each page is reached by keys from the menu, fits, and is for everybody to use", async () => {
  const tab = await signedIn("observe", { viewport: { width: 390, height: 844 }, colorScheme: "dark", reducedMotion: "reduce" });
  const menu = tab.page.locator("#page-links");
  await menu.waitFor({ state: "hidden" });
  const addresses = await menu.locator("a").evaluateAll((all) => all.map((each) => each.getAttribute("href")));
  for (const address of addresses) {
    await tab.page.locator(".menu-button").focus();
    await tab.page.keyboard.press("Enter");
    await menu.locator(`a[href="${address}"]`).focus();
    await tab.page.keyboard.press("Enter");
    await menu.waitFor({ state: "hidden" });
    await tab.see("main h1");
    await tab.settled();
    await tab.requireAccessible();
    assert.ok((await tab.page.evaluate(() => document.documentElement.scrollWidth - innerWidth)) <= 0, address);
  }
  await tab.close();
});

test("an alarm is noticed by who may, for all to see", async () => {
  const watcher = await signedIn("observe");
  const alarm = (await host.ask("GET", "alarms")).items[0];
  await watcher.page.goto(`${host.address}#/alarms`);
  const card = (tab) => tab.page.locator(`[data-alarm="${alarm.id}"]`);
  await card(watcher).getByText('This takes the role "operate"; yours is "observe"').waitFor();
  assert.ok(await card(watcher).getByRole("button", { name: "Take notice" }).isDisabled());
  const operator = await signedIn("operate");
  await operator.page.goto(`${host.address}#/alarms`);
  await card(operator).getByRole("button", { name: "Take notice" }).click();
  await card(operator).getByText("Noticed by").waitFor();
  await card(watcher).getByText("Noticed by").waitFor();
  const { acknowledged } = await host.ask("GET", `alarms/${alarm.id}`);
  await card(watcher).locator(`[data-acknowledged="${acknowledged.by}"]`).waitFor();
  await operator.close();
  await watcher.close();
});

test("work that runs is cancelled where the document has such a thing, and stands among what has ended", async () => {
  const tab = await signedIn("operate");
  const volume = (await host.ask("GET", "mirn/volumes")).find((each) => each.name === "System");
  await host.ask("PUT", `mirn/volumes/${volume.id}/verify`, { action: "START", repair: true });
  await tab.page.goto(`${host.address}#/jobs`);
  await tab.see("[data-job]");
  await tab.page.getByRole("button", { name: "Verify volume: cancel" }).click();
  await tab.page.getByRole("button", { name: "Show the plan" }).click();
  await tab.page.getByRole("button", { name: "Do it" }).click();
  await tab.seeText("It is done.");
  await tab.page.getByRole("button", { name: "Close" }).click();
  await tab.page.locator("[data-row]", { hasText: "cancelled" }).first().waitFor();
  await tab.page.locator("[data-job]").waitFor({ state: "detached" });
  await tab.requireAccessible();
  await tab.close();
});

test("the history is narrowed by what the document tells, and exported by who may", async () => {
  const tab = await signedIn("administer");
  await tab.page.goto(`${host.address}#/history`);
  await tab.page.getByLabel("Kind").selectOption("alarm");
  await tab.page.getByLabel("Severity").selectOption("critical");
  await tab.page.getByRole("button", { name: "Show these" }).click();
  const expected = (await host.ask("GET", "history?kind=alarm&severity=critical&limit=50")).items;
  await tab.page.waitForFunction(
    (count) => document.querySelectorAll("[data-row]").length === count,
    expected.length,
  );
  const rows = await tab.page.locator("[data-row]").evaluateAll((all) => all.map((each) => Number(each.dataset.row)));
  assert.deepEqual(rows, expected.map((entry) => entry.row));
  const begun = tab.page.waitForEvent("download");
  await tab.page.getByRole("button", { name: "Export the history" }).click();
  const lines = readFileSync(await (await begun).path(), "utf8").trim().split("\n").map((line) => JSON.parse(line));
  assert.ok(lines.length > expected.length);
  assert.deepEqual(lines.map((entry) => entry.row), lines.map((_, index) => index + 1));
  await tab.seeText("history.ndjson is in your downloads.");
  await tab.close();

  const watcher = await signedIn("observe");
  await watcher.page.goto(`${host.address}#/history`);
  await watcher.seeText('This takes the role "administer"; yours is "observe"');
  assert.ok(await watcher.page.getByRole("button", { name: "Export the history" }).isDisabled());
  assert.ok(await watcher.page.locator("#filter-kind option[value=audit]").isDisabled());
  await watcher.close();
});

test("what would come of two disks that fail is worked through, and changes nothing", async () => {
  const tab = await signedIn("observe");
  const volume = (await host.ask("GET", "mirn/volumes")).find((each) => each.name === "System");
  const pair = (await host.ask("GET", "mirn/enddevices")).filter((each) => each.arrayId === volume.arrayId);
  await tab.page.goto(`${host.address}#/whatif`);
  for (const disk of pair) {
    await tab.page.getByLabel("Disk", { exact: true }).selectOption(disk.id);
    await tab.page.getByRole("button", { name: "Add this" }).click();
    await tab.seeText(`A disk fails: ${disk.type} ${disk.serialNumber}`);
  }
  await tab.page.getByRole("button", { name: "What comes of it?" }).click();
  await tab.seeText("These volumes would serve no more: System.");
  await tab.requireAccessible();
  await tab.page.getByRole("button", { name: "Remove" }).first().click();
  await tab.page.locator("[data-lost]").waitFor({ state: "detached" });
  await tab.page.getByRole("button", { name: "What comes of it?" }).click();
  await tab.see("[data-lost='0']");
  assert.equal((await host.ask("GET", "mirn/enddevices")).find((each) => each.id === pair[0].id).state, "NORMAL");
  await tab.close();
});

test("a setting is stored by who may, and in force after a restart", async () => {
  const watcher = await signedIn("observe");
  await watcher.page.goto(`${host.address}#/settings`);
  await watcher.seeText('This takes the role "administer"; yours is "observe"');
  assert.ok(await watcher.page.getByRole("button", { name: "Store" }).isDisabled());
  await watcher.close();

  const tab = await signedIn("administer");
  await tab.page.goto(`${host.address}#/settings`);
  const told = (await host.ask("GET", "mirn/config")).locate_timeout;
  const store = tab.page.getByRole("button", { name: "Store" });
  await tab.page.getByLabel("Locate timeout").fill(String(told.max + 1));
  assert.ok(await store.isDisabled());
  await tab.page.getByLabel("Locate timeout").fill("30");
  await store.click();
  await tab.seeText("Stored: 30. It is in force after a restart of the host.");
  assert.equal((await host.ask("GET", "mirn/config")).locate_timeout.value, told.value);
  await tab.close();
});

test("the session tells when it ends, and readiness what may help", async () => {
  const tab = await signedIn("operate");
  await tab.page.goto(`${host.address}#/access`);
  await tab.seeText("operate: may also do what keeps the machine going");
  await tab.see("main time");
  await tab.page.goto(`${host.address}#/readiness`);
  const { items, checks } = await host.ask("GET", "readiness");
  await tab.see("[data-item]");
  assert.deepEqual(
    [...new Set(await tab.page.locator("[data-item]").evaluateAll((all) => all.map((each) => each.dataset.item)))].sort(),
    [...new Set(items.map((item) => item.kind))].sort(),
  );
  assert.equal(await tab.page.locator("[data-check]").count(), checks.length);
  await tab.page.locator("[data-item=not-verified]").getByRole("button", { name: "Verify volume" }).first().click();
  await tab.see("dialog[data-change=verifyVolume]");
  await tab.close();
});

test("a lesson ticks by what the machine shows, and who may not break it is told so", async () => {
  const watcher = await signedIn("operate");
  await watcher.page.getByText("Simulator and lessons").click();
  await watcher.seeText('This takes the role "administer"; yours is "operate"');
  assert.ok(await watcher.page.getByLabel("A disk of the machine").isDisabled());
  await watcher.close();

  const tab = await signedIn("administer");
  await tab.page.getByText("Simulator and lessons").click();
  await tab.page.getByLabel("Lesson", { exact: true }).selectOption("return");
  await tab.page.getByRole("button", { name: "Begin" }).click();
  await tab.see("[data-lesson=return][data-done='0']");
  await tab.page.getByRole("button", { name: "Do it now" }).click();
  await tab.see("[data-lesson=return][data-done='1']");
  await tab.requireAccessible();
  await tab.page.getByRole("link", { name: "Go there" }).click();
  await tab.see("[data-lesson=return][data-done='2']");
  await tab.page.getByRole("button", { name: "Do it now" }).click();
  await tab.seeText("That was the lesson.");
  await tab.close();
});
