// Changes that are refused, and values that cannot be: the words are the service's, and nothing that was typed is lost.
import assert from "node:assert/strict";
import { onOwnHosts } from "../../web/stage.mjs";

const story = onOwnHosts({ clockSpeed: 0 });
const kFree = "TB2T7790315";

const dialog = (tab) => tab.page.locator("dialog");
const alert = (tab) => dialog(tab).getByRole("alert");

/** What the service says to a request that it refuses. */
async function refusalOf(host, method, target, body) {
  const answer = await fetch(`${host.address}api/v1/${target}`, {
    method,
    headers: { Authorization: `Bearer ${host.token()}`, "Content-Type": "application/json" },
    body: JSON.stringify(body),
  });
  assert.ok(!answer.ok);
  return (await answer.json()).detail;
}

async function openVolume(signedIn, host, name) {
  const volume = await host.volume(name);
  const tab = await signedIn("administer");
  await tab.visit(`machine/volume/${volume.id}`);
  await tab.see("[data-panel=volume]");
  return { tab, volume };
}

story("the machine changes between the plan and the deed: the deed is refused, and what was typed stays", async ({ host, signedIn }) => {
  const { tab, volume } = await openVolume(signedIn, host, "Scratch");
  await tab.press("Rename volume");
  await tab.fill("Name", "Typed");
  await tab.plan();
  await host.befall("pull-disk", kFree);
  await tab.gone(`[data-disk="${kFree}"]`);
  tab.expect(/412/);
  await tab.press("Do it");
  await tab.seeText("The machine has changed since the plan was made. Look at the plan again.");
  assert.equal((await host.volume("Scratch")).id, volume.id);
  assert.equal(await tab.field("Name").inputValue(), "Typed");
  await tab.requireAccessible();
  await tab.plan();
  await tab.doIt();
  assert.equal((await host.volume("Typed")).id, volume.id);
});

story("the library refuses the deed: its words stand there, the form stays, and a later try is taken", async ({ host, signedIn }) => {
  const { tab, volume } = await openVolume(signedIn, host, "Scratch");
  await tab.press("Rename volume");
  await tab.fill("Name", "Typed");
  await tab.plan();
  await host.failCalls("VexVolumeRename", 1);
  tab.expect(/ 4\d\d|^4\d\d|50\d/);
  await tab.press("Do it");
  await alert(tab).waitFor();
  const told = await alert(tab).innerText();
  await host.failCalls("VexVolumeRename", 1);
  assert.equal(told, await refusalOf(host, "PUT", `mirn/volumes/${volume.id}/name`, { name: "Typed" }));
  assert.equal(await tab.field("Name").inputValue(), "Typed");
  await tab.plan();
  await tab.doIt();
  assert.ok(await host.volume("Typed"));
});

story("a value that cannot be is refused in the service's words, and the better one is taken", async ({ host, signedIn }) => {
  const { tab, volume } = await openVolume(signedIn, host, "Scratch");
  const bad = "much longer than a name of a volume may be";
  await tab.press("Rename volume");
  await tab.requireOff("Show the plan", null, dialog(tab));
  await tab.fill("Name", bad);
  tab.expect(/40\d|422/);
  await tab.press("Show the plan");
  await alert(tab).waitFor();
  assert.equal(await alert(tab).innerText(), await refusalOf(host, "PUT", `mirn/volumes/${volume.id}/name`, { name: bad }));
  assert.equal(await tab.field("Name").inputValue(), bad);
  await tab.requireAccessible();
  await tab.fill("Name", "Better");
  await tab.plan();
  await tab.doIt();
  assert.ok(await host.volume("Better"));
});

story("a size that cannot be", async ({ host, signedIn }) => {
  const { tab } = await openVolume(signedIn, host, "Archive");
  await tab.press("Resize volume");
  await tab.fill("Amount", "many");
  await tab.requireOff("Show the plan", null, dialog(tab));
  await tab.fill("Amount", "1"); // of what it has: a volume does not shrink
  await tab.see("dialog [aria-invalid=true]");
  await tab.requireAccessible();
  await tab.plan();
  tab.expect(/4\d\d|50\d/);
  await tab.press("Do it");
  await alert(tab).waitFor();
  assert.notEqual(await alert(tab).innerText(), "");
  assert.equal(await tab.field("Amount").inputValue(), "1");
  await tab.fill("Amount", "5");
  await tab.choose("Unit", "TB");
  await tab.gone("dialog [aria-invalid=true]");
});

story("a setting beyond its bounds is not sent", async ({ signedIn }) => {
  const tab = await signedIn("administer");
  await tab.visit("settings");
  for (const bad of ["0", "3601", "-1", "1.5", "many", ""]) {
    await tab.fill("Locate timeout", bad);
    await tab.requireOff("Store");
    assert.equal(await tab.field("Locate timeout").getAttribute("aria-invalid"), "true");
  }
  await tab.fill("Locate timeout", "3600");
  await tab.press("Store");
  await tab.seeText("Stored: 3600.");
});

story("a number beyond its bounds in a change is refused in the service's words", async ({ host, signedIn }) => {
  const tab = await signedIn("administer");
  await tab.visit("machine");
  await tab.press("Set config");
  await tab.fill("How long a bay's light stays on", "3601");
  tab.expect(/40\d|422/);
  await tab.press("Show the plan");
  await alert(tab).waitFor();
  assert.equal(await alert(tab).innerText(), await refusalOf(host, "PUT", "mirn/config", { locate_timeout: 3601 }));
  assert.equal(await tab.field("How long a bay's light stays on").inputValue(), "3601");
});

story("the disk that a form is about is lost while it is open", async ({ host, signedIn }) => {
  const { id, type } = await host.disk(kFree);
  const tab = await signedIn("administer");
  await tab.visit(`machine/disk/${id}`);
  await tab.press("Clear disk");
  await tab.plan();
  await tab.confirm(`${type} ${kFree}`);
  tab.expect(/404|412/);
  await host.befall("pull-disk", kFree);
  await tab.gone(`[data-disk="${kFree}"]`);
  await tab.press("Do it");
  await alert(tab).waitFor();
  await tab.press("Show the plan");
  await alert(tab).waitFor();
  assert.equal(await alert(tab).innerText(), await refusalOf(host, "PUT", `mirn/disks/${id}/clear`));
  await tab.press("Cancel", dialog(tab));
  await tab.seeText("This object is not there any more.");
});

story("a disk that was chosen is lost while the form is open: the choice is told as gone, and can be made anew", async ({ host, signedIn }) => {
  const tab = await signedIn("administer");
  const volume = await host.volume("Archive");
  await tab.visit(`machine/volume/${volume.id}`);
  tab.expect(/404.*dryRun=true$/, /status of 404/); // what is still chosen would be refused
  await tab.press("Rebuild volume");
  const sound = await host.disk("OD3T2210A40C");
  const second = await host.disk("OD3T2210A40F");
  await tab.choose("Disk", sound.id);
  await host.befall("pull-disk", sound.id);
  const told = tab.page.locator(`dialog option[value="${sound.id}"]`, { hasText: "This object is not there any more." });
  await told.waitFor({ state: "attached" });
  await tab.seeText("It would be refused");
  await tab.choose("Disk", second.id);
  await tab.plan();
  await tab.confirm("Archive");
  await tab.doIt();
  assert.equal((await host.ask("GET", "jobs?kind=rebuild")).items[0].object.id, volume.id);
});

story("a disk of a list of ticks is lost while the form is open", async ({ host, signedIn }) => {
  const tab = await signedIn("administer");
  const free = await host.disk(kFree);
  const [array] = (await host.ask("GET", "mirn/arrays")).filter(({ name }) => name === "System_Array");
  await tab.visit(`machine/array/${array.id}`);
  tab.expect(/404.*dryRun=true$/, /status of 404/);
  await tab.press("Add array disks");
  await tab.page.locator(`dialog input[value="${free.id}"]`).check();
  await host.befall("pull-disk", kFree);
  await tab.gone(`[data-disk="${kFree}"]`);
  // What was chosen stays there as gone, to be taken back; otherwise it would be sent unseen.
  const chosen = tab.page.locator(`dialog input[value="${free.id}"]`);
  await tab.page.locator("dialog li", { hasText: "This object is not there any more." }).waitFor();
  await tab.seeText("It would be refused");
  await chosen.click();
  await tab.gone(chosen);
  await tab.requireOff("Show the plan", null, dialog(tab));
});
