// What people see in a browser before the running host. All waits are for what comes, none for a time.
import assert from "node:assert/strict";
import { FirstSight } from "./first_sight.mjs";
import { kMachineStories } from "./machine_stories.mjs";
import { calmMachine, kLooseDisks } from "./machines.mjs";
import { onOneHost, onOwnHosts } from "./stage.mjs";

const kPair = ["QV48021000A1", "QV48021000A7"]; // the disks of the volume System
const story = onOneHost();
const storyOfItsOwn = onOwnHosts({ machine: calmMachine(), clockSpeed: 0 });

for (const name of ["a disk fails and a spare takes over", "a disk warns that it may fail", "the journaling drive is lost"]) {
  storyOfItsOwn(`by clicks to its end: ${name}`, kMachineStories[name]);
}

storyOfItsOwn("a fault injected is on the first page within 2 seconds, by the first event that tells of it", async ({ host, open }) => {
  const tab = await open();
  const sight = await FirstSight.prepare(tab);
  await tab.page.goto(await host.signInAddress("observe"));
  await tab.see("[data-severity=ok]");
  const times = [];
  for (const serial of kLooseDisks) {
    const { cause, milliseconds, events, looks } = await sight.of("fail-disk", await host.disk(serial));
    assert.ok(events.length > 0, "the page heard of it");
    assert.ok(looks.length > 0 && looks[0].begun >= events[0].at, "the page asked because it heard of it, and not by itself");
    assert.ok(looks[0].causes.includes(cause), "its first look showed it");
    times.push(milliseconds);
  }
  const middle = times.sort((one, other) => one - other)[Math.floor(times.length / 2)];
  console.log(`a fault was seen after ${times.map(Math.round).join(", ")} ms`);
  assert.ok(middle < 2000, `${middle} ms`);
});

story("the printed address signs in by itself, once, and leaves no trace of the code", async ({ host, open }) => {
  const address = await host.signInAddress("operate");
  const tab = await open();
  await tab.page.goto(address);
  await tab.see("[data-role=operate]");
  assert.equal(await tab.page.evaluate(() => location.hash), "");
  await tab.see("[data-severity=critical]");
  await tab.seeText("This machine is simulated");
  await tab.page.reload();
  await tab.see("[data-role=operate]");

  const second = await open();
  second.expect(/401/);
  await second.page.goto(address);
  await second.seeText("has been used already");
  await second.requireAccessible();
});

story("a token signs in, a wrong one does not, and signing out forgets it", async ({ host, open }) => {
  const tab = await open();
  await tab.page.goto(host.address);
  await tab.requireAccessible();
  tab.expect(/401/);
  await tab.fill("Or give a token:", "mirn_wrong");
  await tab.press("Sign in");
  await tab.seeText("does not know this token");
  await tab.fill("Or give a token:", host.token());
  await tab.press("Sign in");
  await tab.see("[data-role=administer]");
  tab.expect(/409/);  // the first token is no session, and stays
  await tab.press("Sign out");
  await tab.see("#token");
  assert.equal(await tab.page.evaluate(() => sessionStorage.length), 0);
});

story("a fault shows by itself, and so does the work that mends it", async ({ host, signedIn }) => {
  const tab = await signedIn("observe");
  await tab.seeText("No work is running.");
  const disk = await host.disk(kPair[1]);
  await host.befall("fail-disk", disk.id);
  await tab.see(`[data-cause="disk-failed-${disk.id}"]`);
  await tab.see("[data-job]");
  await tab.seeText("Rebuild: System");
  await tab.requireAccessible();
});

story("a lost connection is told, and the page catches up by itself", async ({ host, open, signedIn }) => {
  const tab = await signedIn("observe");
  tab.expect(/ERR_CONNECTION|ERR_INCOMPLETE|ERR_EMPTY|401|Failed to load/);
  await host.stop();
  await tab.see("[data-freshness=cut]");
  await tab.seeText("Connection lost at");
  await host.start();
  // Sessions end with the host: the page says so instead of showing what was.
  await tab.seeText("The session has ended.");

  const lasting = await open();
  lasting.expect(/ERR_CONNECTION|ERR_INCOMPLETE|ERR_EMPTY|Failed to load/);
  await lasting.page.goto(host.address);
  await lasting.fill("Or give a token:", host.token());
  await lasting.press("Sign in");
  await lasting.see("[data-freshness=live]");
  await host.stop();
  await lasting.see("[data-freshness=cut]");
  await host.start();
  await lasting.see("[data-freshness=live]");
  const disk = await host.disk("TB4T6610092");
  await host.befall("fail-disk", disk.id);
  await lasting.see(`[data-cause="disk-failed-${disk.id}"]`);
});

for (const [width, height] of [
  [390, 844],
  [1280, 900],
  [2560, 1440],
]) {
  story(`nothing is wider than a window of ${width}, in light and dark`, async ({ signedIn }) => {
    for (const colorScheme of ["light", "dark"]) {
      const tab = await signedIn("observe", { colorScheme, viewport: { width, height }, reducedMotion: "reduce" });
      await tab.see("[data-severity]");
      await tab.requireAccessible();
      await tab.requireNoOverflow();
    }
  });
}

story("the machine shows who belongs to whom, and lights a bay with one click", async ({ host, signedIn }) => {
  const tab = await signedIn("operate");
  await tab.follow("The machine");
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
  await tab.press("Light on");
  await tab.seeText("The light is on.");
  await tab.requireAccessible();
  await tab.follow("Close");
  await tab.gone("[data-panel]");
});

story("a role that may not light a bay finds that out of use, with the reason", async ({ host, signedIn }) => {
  const tab = await signedIn("observe");
  const disk = (await host.ask("GET", "mirn/enddevices"))[0];
  await tab.visit(`machine/disk/${disk.id}`);
  await tab.requireOff("Light on", 'This takes the role "operate"; yours is "observe"');
  await tab.requireAccessible();
});

story("a disk that is pulled leaves its bay free", async ({ host, signedIn }) => {
  const tab = await signedIn("observe");
  const disk = (await host.ask("GET", "mirn/enddevices")).find((each) => each.usage === "PASS_THROUGH");
  await tab.visit(`machine/disk/${disk.id}`);
  await tab.see(`[data-disk="${disk.serialNumber}"]`);
  await host.befall("pull-disk", disk.id);
  await tab.gone(`[data-disk="${disk.serialNumber}"]`);
  await tab.seeText("This object is not there any more.");
  await tab.see(".tile-free");
});

story("the machine is used by keys alone", async ({ signedIn }) => {
  const tab = await signedIn("observe");
  await tab.page.keyboard.press("Tab");
  await tab.page.keyboard.press("Enter"); // to the content, past what is on every page
  assert.equal(await tab.page.evaluate(() => document.activeElement?.id), "content");
  await tab.visit("machine");
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
});

story("a degraded volume is rebuilt from the first page: what will be lost is told first, and confirmed by its name", async ({ host, signedIn }) => {
  const tab = await signedIn("operate");
  const volume = await host.volume("Archive");
  const cause = tab.page.locator(`[data-cause="volume-degraded-${volume.id}"]`);
  await cause.getByRole("button", { name: "Rebuild volume" }).click();
  await tab.see("dialog[data-change=rebuildVolume]");
  const plan = tab.button("Show the plan");
  await plan.waitFor();
  assert.ok(await plan.isDisabled());
  const told = await host.ask("GET", `actions/volume/${volume.id}/rebuildVolume/diskId`);
  const disk = told.items.find((each) => each.allowed);
  await tab.choose("Disk", disk.value);
  await tab.requireAccessible();
  await plan.click();
  await tab.seeText(`everything on ${disk.object.name}`);
  const act = tab.button("Do it");
  assert.ok(await act.isDisabled());
  await tab.fill("To go on, type the name: Archive", "archive");
  assert.ok(await act.isDisabled());
  await tab.confirm("Archive");
  await tab.requireAccessible();
  await act.click();
  await tab.seeText("It is done.");
  await tab.press("Close");
  await tab.seeText("Rebuild: Archive");
  const jobs = (await host.ask("GET", "jobs?kind=rebuild")).items;
  assert.ok(jobs.some((each) => each.object.name === "Archive"));
});

story("a plan of a machine that has changed meanwhile is not carried out", async ({ host, signedIn }) => {
  const tab = await signedIn("administer");
  const volume = await host.volume("Scratch");
  await tab.visit(`machine/volume/${volume.id}`);
  await tab.press("Delete volume");
  await tab.press("Show the plan");
  await tab.confirm("Scratch");
  const disk = (await host.ask("GET", "mirn/enddevices")).find((each) => each.usage === "PASS_THROUGH");
  await host.befall("pull-disk", disk.id);
  await tab.gone(`[data-disk="${disk.serialNumber}"]`);
  tab.expect(/412/);
  await tab.press("Do it");
  await tab.seeText("The machine has changed since the plan was made.");
  assert.ok((await host.ask("GET", "mirn/volumes")).some((each) => each.id === volume.id));
  await tab.press("Show the plan");
  const act = tab.button("Do it");
  await act.waitFor();
  assert.ok(await act.isDisabled());
  await tab.confirm("Scratch");
  tab.expect(/404/);  // the page may still ask what can be done with what has just gone
  await tab.press("Do it");
  await tab.seeText("It is done.");
  assert.ok(!(await host.ask("GET", "mirn/volumes")).some((each) => each.id === volume.id));
  await tab.see(`#panel-title:text-is("This object is not there any more.")`);
  await tab.seeText("It is done.");  // also when the page knows that what it was done with has gone
});

story("what cannot be done is told in the service's words", async ({ host, signedIn }) => {
  const tab = await signedIn("administer");
  const disk = (await host.ask("GET", "mirn/enddevices")).find((each) => each.usage === "ARRAY_MEMBER");
  const told = await host.ask("GET", `actions/disk/${disk.id}`);
  const refused = told.actions.find((each) => each.verdict === "refused");
  await tab.visit(`machine/disk/${disk.id}`);
  await tab.page.getByText(/^Why .* cannot be done$/).click();
  await tab.seeText(refused.words);
  await tab.requireAccessible();
});
