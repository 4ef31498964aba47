// What people see in a browser before the running host. All waits are for what comes, none for a time.
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { Host, startBrowser, Tab } from "./browser.mjs";

const kPair = ["QV48021000A1", "QV48021000A7"]; // the disks of the volume System
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

test("the printed address signs in by itself, once, and leaves no trace of the code", async () => {
  const address = await host.signInAddress("operate");
  const tab = await Tab.open(browser);
  await tab.page.goto(address);
  await tab.see("[data-role=operate]");
  assert.equal(await tab.page.evaluate(() => location.hash), "");
  await tab.see("[data-severity=critical]");
  await tab.seeText("This machine is simulated");
  await tab.page.reload();
  await tab.see("[data-role=operate]");
  await tab.close();

  const second = await Tab.open(browser);
  second.expect(/401/);
  await second.page.goto(address);
  await second.seeText("has been used already");
  await second.requireAccessible();
  await second.close();
});

test("a token signs in, a wrong one does not, and signing out forgets it", async () => {
  const tab = await Tab.open(browser);
  await tab.page.goto(host.address);
  await tab.requireAccessible();
  tab.expect(/401/);
  await tab.page.getByLabel("Or give a token:").fill("mirn_wrong");
  await tab.page.getByRole("button", { name: "Sign in" }).click();
  await tab.seeText("does not know this token");
  await tab.page.getByLabel("Or give a token:").fill(host.token());
  await tab.page.getByRole("button", { name: "Sign in" }).click();
  await tab.see("[data-role=administer]");
  tab.expect(/409/);  // the first token is no session, and stays
  await tab.page.getByRole("button", { name: "Sign out" }).click();
  await tab.see("#token");
  assert.equal(await tab.page.evaluate(() => sessionStorage.length), 0);
  await tab.close();
});

test("a fault shows by itself, and so does the work that mends it", async () => {
  const tab = await signedIn("observe");
  await tab.seeText("No work is running.");
  const disk = await host.disk(kPair[1]);
  const begin = Date.now();
  await host.ask("POST", "simulator/fail-disk", { disk: disk.id });
  await tab.see(`[data-cause="disk-failed-${disk.id}"]`);
  const seconds = (Date.now() - begin) / 1000;
  console.log(`a fault was seen after ${seconds.toFixed(2)} s`);
  await tab.see("[data-job]");
  await tab.seeText("Rebuild: System");
  await tab.requireAccessible();
  await tab.close();
});

test("a lost connection is told, and the page catches up by itself", async () => {
  const tab = await signedIn("observe");
  tab.expect(/ERR_CONNECTION|ERR_INCOMPLETE|ERR_EMPTY|401|Failed to load/);
  await host.stop();
  await tab.see("[data-freshness=cut]");
  await tab.seeText("Connection lost at");
  await host.start();
  // Sessions end with the host: the page says so instead of showing what was.
  await tab.seeText("The session has ended.");
  await tab.close();

  const lasting = await Tab.open(browser);
  lasting.expect(/ERR_CONNECTION|ERR_INCOMPLETE|ERR_EMPTY|Failed to load/);
  await lasting.page.goto(host.address);
  await lasting.page.getByLabel("Or give a token:").fill(host.token());
  await lasting.page.getByRole("button", { name: "Sign in" }).click();
  await lasting.see("[data-freshness=live]");
  await host.stop();
  await lasting.see("[data-freshness=cut]");
  await host.start();
  await lasting.see("[data-freshness=live]");
  const disk = await host.disk("TB4T6610092");
  await host.ask("POST", "simulator/fail-disk", { disk: disk.id });
  await lasting.see(`[data-cause="disk-failed-${disk.id}"]`);
  await lasting.close();
});

for (const [width, height] of [
  [390, 844],
  [1280, 900],
  [2560, 1440],
]) {
  test(`nothing is wider than a window of ${width}, in light and dark`, async () => {
    for (const colorScheme of ["light", "dark"]) {
      const tab = await signedIn("observe", { colorScheme, viewport: { width, height }, reducedMotion: "reduce" });
      await tab.see("[data-severity]");
      await tab.requireAccessible();
      assert.ok((await tab.page.evaluate(() => document.documentElement.scrollWidth - innerWidth)) <= 0);
      await tab.close();
    }
  });
}

test("the machine shows who belongs to whom, and lights a bay with one click", async () => {
  const tab = await signedIn("operate");
  await tab.page.getByRole("link", { name: "The machine" }).click();
  await tab.see("[data-controller]");
  await tab.requireAccessible();
  const disks = await host.ask("GET", "mirn/enddevices");
  assert.equal(await tab.page.locator("[data-disk]").count(), disks.length);
  const member = disks.find((each) => each.usage === "ARRAY_MEMBER" && each.state === "NORMAL");
  const fellows = disks.filter((each) => each.arrayId === member.arrayId);
  const array = (await host.ask("GET", "mirn/arrays")).find((each) => each.id === member.arrayId);
  await tab.page.locator(`[data-array="${array.name}"] h2 a`).hover();
  await tab.see(`.tile.is-related [data-disk="${member.serialNumber}"]`);
  assert.equal(await tab.page.locator(".tile.is-related [data-disk]").count(), fellows.length);
  await tab.page.locator(`[data-disk="${member.serialNumber}"]`).click();
  await tab.see("[data-panel=disk]");
  await tab.seeText("Serial number");
  await tab.page.getByRole("button", { name: "Light on" }).click();
  await tab.seeText("The light is on.");
  await tab.requireAccessible();
  await tab.page.getByRole("link", { name: "Close" }).click();
  await tab.page.locator("[data-panel]").waitFor({ state: "detached" });
  await tab.close();
});

test("a role that may not light a bay is told so by the service", async () => {
  const tab = await signedIn("observe");
  const disk = (await host.ask("GET", "mirn/enddevices"))[0];
  tab.expect(/403/);
  await tab.page.goto(`${host.address}#/machine/disk/${disk.id}`);
  await tab.page.getByRole("button", { name: "Light on" }).click();
  await tab.seeText('This takes the role "operate"');
  await tab.close();
});

test("a disk that is pulled leaves its bay free", async () => {
  const tab = await signedIn("observe");
  const disk = (await host.ask("GET", "mirn/enddevices")).find((each) => each.usage === "PASS_THROUGH");
  await tab.page.goto(`${host.address}#/machine/disk/${disk.id}`);
  await tab.see(`[data-disk="${disk.serialNumber}"]`);
  await host.ask("POST", "simulator/pull-disk", { disk: disk.id });
  await tab.page.locator(`[data-disk="${disk.serialNumber}"]`).waitFor({ state: "detached" });
  await tab.seeText("This object is not there any more.");
  await tab.see(".tile-free");
  await tab.close();
});

test("the machine is used by keys alone", async () => {
  const tab = await signedIn("observe");
  await tab.page.keyboard.press("Tab");
  await tab.page.keyboard.press("Enter"); // to the content, past what is on every page
  assert.equal(await tab.page.evaluate(() => document.activeElement?.id), "content");
  await tab.page.goto(`${host.address}#/machine`);
  await tab.see("[data-controller]");
  const wanted = await tab.page.locator("[data-disk]").first().getAttribute("data-disk");
  await tab.page.locator("#content").focus();
  const current = () => tab.page.evaluate(() => document.activeElement?.getAttribute("data-disk"));
  for (let presses = 0; presses < 10 && (await current()) !== wanted; presses += 1) await tab.page.keyboard.press("Tab");
  assert.equal(await current(), wanted);
  await tab.see(`.tile.is-related [data-disk="${wanted}"]`);
  await tab.page.keyboard.press("Enter");
  await tab.see("[data-panel=disk]");
  assert.equal(await tab.page.evaluate(() => document.activeElement?.id), "panel-title");
  await tab.close();
});

test("a degraded volume is rebuilt from the first page: what will be lost is told first, and confirmed by its name", async () => {
  const tab = await signedIn("operate");
  const volume = (await host.ask("GET", "mirn/volumes")).find((each) => each.name === "Archive");
  const cause = tab.page.locator(`[data-cause="volume-degraded-${volume.id}"]`);
  await cause.getByRole("button", { name: "Rebuild volume" }).click();
  await tab.see("dialog[data-change=rebuildVolume]");
  const plan = tab.page.getByRole("button", { name: "Show the plan" });
  await plan.waitFor();
  assert.ok(await plan.isDisabled());
  const told = await host.ask("GET", `actions/volume/${volume.id}/rebuildVolume/diskId`);
  const disk = told.items.find((each) => each.allowed);
  await tab.page.getByLabel("Disk").selectOption(disk.value);
  await tab.requireAccessible();
  await plan.click();
  await tab.seeText(`everything on ${disk.object.name}`);
  const act = tab.page.getByRole("button", { name: "Do it" });
  assert.ok(await act.isDisabled());
  await tab.page.getByLabel("To go on, type the name: Archive").fill("archive");
  assert.ok(await act.isDisabled());
  await tab.page.getByLabel("To go on, type the name: Archive").fill("Archive");
  await tab.requireAccessible();
  await act.click();
  await tab.seeText("It is done.");
  await tab.page.getByRole("button", { name: "Close" }).click();
  await tab.seeText("Rebuild: Archive");
  const jobs = (await host.ask("GET", "jobs?kind=rebuild")).items;
  assert.ok(jobs.some((each) => each.object.name === "Archive"));
  await tab.close();
});

test("a plan of a machine that has changed meanwhile is not carried out", async () => {
  const tab = await signedIn("administer");
  const volume = (await host.ask("GET", "mirn/volumes")).find((each) => each.name === "Scratch");
  await tab.page.goto(`${host.address}#/machine/volume/${volume.id}`);
  await tab.page.getByRole("button", { name: "Delete volume" }).click();
  await tab.page.getByRole("button", { name: "Show the plan" }).click();
  await tab.page.getByLabel("To go on, type the name: Scratch").fill("Scratch");
  const disk = (await host.ask("GET", "mirn/enddevices")).find((each) => each.usage === "PASS_THROUGH");
  await host.ask("POST", "simulator/pull-disk", { disk: disk.id });
  await tab.page.locator(`[data-disk="${disk.serialNumber}"]`).waitFor({ state: "detached" });
  tab.expect(/412/);
  await tab.page.getByRole("button", { name: "Do it" }).click();
  await tab.seeText("The machine has changed since the plan was made.");
  assert.ok((await host.ask("GET", "mirn/volumes")).some((each) => each.id === volume.id));
  await tab.page.getByRole("button", { name: "Show the plan" }).click();
  const act = tab.page.getByRole("button", { name: "Do it" });
  await act.waitFor();
  assert.ok(await act.isDisabled());
  await tab.page.getByLabel("To go on, type the name: Scratch").fill("Scratch");
  tab.expect(/404/);  // the page may still ask what can be done with what has just gone
  await tab.page.getByRole("button", { name: "Do it" }).click();
  await tab.seeText("It is done.");
  assert.ok(!(await host.ask("GET", "mirn/volumes")).some((each) => each.id === volume.id));
  await tab.see(`#panel-title:text-is("This object is not there any more.")`);
  await tab.seeText("It is done.");  // also when the page knows that what it was done with has gone
  await tab.close();
});

test("what cannot be done is told in the service's words", async () => {
  const tab = await signedIn("administer");
  const disk = (await host.ask("GET", "mirn/enddevices")).find((each) => each.usage === "ARRAY_MEMBER");
  const told = await host.ask("GET", `actions/disk/${disk.id}`);
  const refused = told.actions.find((each) => each.verdict === "refused");
  await tab.page.goto(`${host.address}#/machine/disk/${disk.id}`);
  await tab.page.getByText(/^Why .* cannot be done$/).click();
  await tab.seeText(refused.words);
  await tab.requireAccessible();
  await tab.close();
});
