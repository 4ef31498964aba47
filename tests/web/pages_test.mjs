// The pages beside the two first ones, in a browser before the running host. All waits are for what comes, none for a time.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { onOneHost } from "./stage.mjs";

const story = onOneHost();

story("on a telephone each page is reached by keys from the menu, fits, and is for everybody to use", async ({ signedIn }) => {
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
    await tab.requireNoOverflow(address);
  }
});

story("an alarm is noticed by who may, for all to see", async ({ host, signedIn }) => {
  const watcher = await signedIn("observe");
  const alarm = (await host.ask("GET", "alarms")).items[0];
  await watcher.visit("alarms");
  const card = (tab) => tab.page.locator(`[data-alarm="${alarm.id}"]`);
  await card(watcher).getByText('This takes the role "operate"; yours is "observe"').waitFor();
  assert.ok(await card(watcher).getByRole("button", { name: "Take notice" }).isDisabled());
  const operator = await signedIn("operate");
  await operator.visit("alarms");
  await card(operator).getByRole("button", { name: "Take notice" }).click();
  await card(operator).getByText("Noticed by").waitFor();
  await card(watcher).getByText("Noticed by").waitFor();
  const { acknowledged } = await host.ask("GET", `alarms/${alarm.id}`);
  await card(watcher).locator(`[data-acknowledged="${acknowledged.by}"]`).waitFor();
});

story("work that runs is cancelled where the document has such a thing, and stands among what has ended", async ({ host, signedIn }) => {
  const tab = await signedIn("operate");
  const volume = await host.volume("System");
  await host.ask("PUT", `mirn/volumes/${volume.id}/verify`, { action: "START", repair: true });
  await tab.visit("jobs");
  await tab.see("[data-job]");
  await tab.press("Verify volume: cancel");
  await tab.plan();
  await tab.doIt();
  await tab.page.locator("[data-row]", { hasText: "cancelled" }).first().waitFor();
  await tab.gone("[data-job]");
  await tab.requireAccessible();
});

story("the history is narrowed by what the document tells, and exported by who may", async ({ host, signedIn }) => {
  const tab = await signedIn("administer");
  await tab.visit("history");
  await tab.choose("Kind", "alarm");
  await tab.choose("Severity", "critical");
  await tab.press("Show these");
  const expected = (await host.ask("GET", "history?kind=alarm&severity=critical&limit=50")).items;
  await tab.page.waitForFunction(
    (count) => document.querySelectorAll("[data-row]").length === count,
    expected.length,
  );
  const rows = await tab.page.locator("[data-row]").evaluateAll((all) => all.map((each) => Number(each.dataset.row)));
  assert.deepEqual(rows, expected.map((entry) => entry.row));
  const begun = tab.page.waitForEvent("download");
  await tab.press("Export the history");
  const lines = readFileSync(await (await begun).path(), "utf8").trim().split("\n").map((line) => JSON.parse(line));
  assert.ok(lines.length > expected.length);
  assert.deepEqual(lines.map((entry) => entry.row), lines.map((_, index) => index + 1));
  await tab.seeText("history.ndjson is in your downloads.");

  const watcher = await signedIn("observe");
  await watcher.visit("history");
  await watcher.seeText('This takes the role "administer"; yours is "observe"');
  assert.ok(await watcher.button("Export the history").isDisabled());
  assert.ok(await watcher.page.locator("#filter-kind option[value=audit]").isDisabled());
});

story("what would come of two disks that fail is worked through, and changes nothing", async ({ host, signedIn }) => {
  const tab = await signedIn("observe");
  const volume = await host.volume("System");
  const pair = (await host.ask("GET", "mirn/enddevices")).filter((each) => each.arrayId === volume.arrayId);
  await tab.visit("whatif");
  for (const disk of pair) {
    await tab.choose("Disk", disk.id);
    await tab.press("Add this");
    await tab.seeText(`A disk fails: ${disk.type} ${disk.serialNumber}`);
  }
  await tab.press("What comes of it?");
  await tab.seeText("These volumes would serve no more: System.");
  await tab.requireAccessible();
  await tab.button("Remove").first().click();
  await tab.gone("[data-lost]");
  await tab.press("What comes of it?");
  await tab.see("[data-lost='0']");
  assert.equal((await host.ask("GET", "mirn/enddevices")).find((each) => each.id === pair[0].id).state, "NORMAL");
});

story("what-if and the simulator's drawer offer the disks, and nothing else that stands among the end devices", async ({ host, signedIn }) => {
  const tab = await signedIn("administer");
  await tab.visit("whatif");
  await tab.openDrawer();
  const told = await host.ask("GET", "mirn/enddevices");
  const disks = told.filter((each) => each.deviceType === "DISK").map((each) => each.id);
  assert.ok(disks.length < told.length);
  for (const list of ["#event-disk", "#simulated-disk"]) {
    await tab.page.locator(`${list} option[value="${disks[0]}"]`).waitFor({ state: "attached" });
    const offered = await tab.page.locator(`${list} option`).evaluateAll((all) => all.map((each) => each.value));
    assert.deepEqual(offered, ["", ...disks]);
  }
});

story("a setting is stored by who may, and in force after a restart", async ({ host, signedIn }) => {
  const watcher = await signedIn("observe");
  await watcher.visit("settings");
  await watcher.seeText('This takes the role "administer"; yours is "observe"');
  assert.ok(await watcher.button("Store").isDisabled());

  const tab = await signedIn("administer");
  await tab.visit("settings");
  const told = (await host.ask("GET", "mirn/config")).locate_timeout;
  const store = tab.button("Store");
  await tab.fill("Locate timeout", String(told.max + 1));
  assert.ok(await store.isDisabled());
  await tab.fill("Locate timeout", "30");
  await store.click();
  await tab.seeText("Stored: 30. It is in force after a restart of the host.");
  assert.equal((await host.ask("GET", "mirn/config")).locate_timeout.value, told.value);
});

story("the session tells when it ends, and readiness what may help", async ({ host, signedIn }) => {
  const tab = await signedIn("operate");
  await tab.visit("access");
  await tab.seeText("operate: may also do what keeps the machine going");
  await tab.see("main time");
  await tab.visit("readiness");
  const { items, checks } = await host.ask("GET", "readiness");
  await tab.see("[data-item]");
  assert.deepEqual(
    [...new Set(await tab.page.locator("[data-item]").evaluateAll((all) => all.map((each) => each.dataset.item)))].sort(),
    [...new Set(items.map((item) => item.kind))].sort(),
  );
  assert.equal(await tab.page.locator("[data-check]").count(), checks.length);
  await tab.page.locator("[data-item=not-verified]").getByRole("button", { name: "Verify volume" }).first().click();
  await tab.see("dialog[data-change=verifyVolume]");
});

story("a lesson ticks by what the machine shows, and who may not break it is told so", async ({ signedIn }) => {
  const watcher = await signedIn("operate");
  await watcher.openDrawer();
  await watcher.seeText('This takes the role "administer"; yours is "operate"');
  assert.ok(await watcher.field("A disk of the machine").isDisabled());

  const tab = await signedIn("administer");
  await tab.openDrawer();
  await tab.choose("Lesson", "return");
  await tab.press("Begin");
  await tab.see("[data-lesson=return][data-done='0']");
  await tab.press("Do it now");
  await tab.see("[data-lesson=return][data-done='1']");
  await tab.requireAccessible();
  await tab.follow("Go there");
  await tab.see("[data-lesson=return][data-done='2']");
  await tab.press("Do it now");
  await tab.seeText("That was the lesson.");
});

story("a German browser is met in German, and whoever would rather read English has it from then on", async ({ open, host }) => {
  const tab = await open({ locale: "de-AT" });
  const language = () => tab.page.locator("html").getAttribute("lang");
  await tab.page.goto(host.address);
  await tab.seeText("Oder geben Sie ein Token an:");
  assert.equal(await language(), "de");
  await tab.requireAccessible();
  await tab.page.goto(await host.signInAddress("operate"));
  await tab.see("[data-freshness=live]");
  await tab.page.getByRole("link", { name: "Was wäre, wenn" }).click();
  await tab.page.getByRole("heading", { level: 1, name: "Was wäre, wenn" }).waitFor();
  await tab.press("English");
  await tab.page.getByRole("heading", { level: 1, name: "What if" }).waitFor();
  assert.equal(await language(), "en");
  await tab.page.reload();
  await tab.page.getByRole("heading", { level: 1, name: "What if" }).waitFor();
  await tab.press("Deutsch");
  await tab.page.getByRole("heading", { level: 1, name: "Was wäre, wenn" }).waitFor();
  await tab.press("Abmelden");
  await tab.seeText("Oder geben Sie ein Token an:");
});
