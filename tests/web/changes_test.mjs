// Changes that lead through several steps, by clicks before the running host. All waits are for what comes.
import assert from "node:assert/strict";
import { onOneHost } from "./stage.mjs";

const story = onOneHost();

story("a volume is made in four steps, with what comes of it in sight, and going back keeps what was chosen", async ({ host, signedIn }) => {
  const tab = await signedIn("administer");
  await tab.follow("The machine");
  await tab.follow("Make a volume");
  await tab.see("[data-step='1']");
  const next = tab.button("Next");
  assert.ok(await next.isDisabled());
  await tab.tick("Mirrored: each disk holds the same.");
  await tab.requireAccessible();
  await next.click();
  await tab.tick("A new array, from disks");
  const disks = (await host.ask("GET", "mirn/enddevices")).filter((each) => /^TB2T/.test(each.serialNumber));
  assert.equal(disks.length, 2);
  for (const disk of disks) await tab.page.locator(`[data-picker=disks] input[value="${disk.id}"]`).check();
  await tab.see("[data-coming=there]");
  await tab.requireAccessible();
  await next.click();
  await tab.follow("Back");
  assert.ok(await tab.page.locator(`input[value="${disks[0].id}"]`).isChecked());
  await tab.page.reload();
  assert.ok(await tab.page.locator(`input[value="${disks[1].id}"]`).isChecked());
  await next.click();
  await tab.fill("Name", "Films");
  await tab.field("All that is free").uncheck();
  assert.ok(await next.isDisabled());
  await tab.fill("Amount", "300");
  await tab.page.locator("[data-coming=there]").getByText("about 300 GB").waitFor();
  await tab.requireAccessible();
  await next.click();
  await tab.confirm("Films");
  await tab.requireAccessible();
  await tab.press("Do it");
  await tab.seeText("The volume has been made.");
  await tab.gone("[data-coming]"); // the same again would be refused
  await tab.press("Make a volume");
  await tab.see("[data-step='1']");
  await tab.see("[data-coming=none]");
  await tab.follow("The machine");
  await tab.see("[data-volume=Films]");
  const made = await host.volume("Films");
  assert.equal(made.raidLevel, "RAID_1");
  assert.ok(Math.abs(Number(made.totalSize) - 300e9) < 1e9);
});

story("a disk is replaced step by step; another one that vanishes stops it, and a reload keeps its place", async ({ host, signedIn }) => {
  const tab = await signedIn("operate");
  const old = await host.disk("OD3T2210A409");
  const other = await host.disk("OD3T2210A40C");
  const cause = tab.page.locator(`[data-cause="disk-failed-${old.id}"]`);
  await cause.getByRole("link", { name: "Replace this disk" }).click();
  await tab.see("[data-step=light]");
  await tab.requireAccessible();
  await tab.press("Light on");
  await tab.seeText("The light is on.");
  await tab.press("I have found the bay");
  await tab.see("[data-step=pull]");
  await host.befall("pull-disk", other.id);
  await tab.see("[data-lost='1']");
  await tab.seeText(`NVME OD3T2210A40C of bay ${other.address} has gone as well.`);
  await tab.gone("[data-step]");
  await tab.requireAccessible();
  await tab.page.reload();
  await tab.see("[data-lost='1']");
  await host.befall("insert-disk", "OD3T2210A40C");
  await tab.see("[data-step=pull]");
  await host.befall("pull-disk", old.id);
  await tab.see("[data-step=insert]");
  await tab.page.reload();
  await tab.see("[data-step=insert]");
  await tab.requireAccessible();
  await host.befall("insert-blank-disk", "OD3T2210A409");
  await tab.see("[data-step=take]");
  await tab.requireAccessible();
  await tab.press("Rebuild volume: Archive");
  await tab.press("Show the plan");
  await tab.confirm("Archive");
  await tab.doIt();
  await tab.see("[data-step=out]");
  await tab.requireAccessible();
  await tab.press("Finish");
  await tab.seeText("Rebuild: Archive");
  assert.equal(await tab.page.evaluate(() => Object.keys(sessionStorage).filter((key) => key.startsWith("replace")).length), 0);
});

story("what is of the machine as a whole is done from its page", async ({ host, signedIn }) => {
  const tab = await signedIn("administer");
  await tab.visit("machine");
  await tab.press("Set config");
  await tab.fill("How long a bay's light stays on", "30");
  await tab.requireAccessible();
  await tab.plan();
  await tab.doIt();
  await tab.press("Rescan");
  await tab.press("Show the plan");
  await tab.press("Do it");
  await tab.seeText("It is done.");
  await tab.requireAccessible();
  assert.equal((await host.ask("GET", "mirn/config")).locate_timeout.value, 12); // until the host is started anew
});

story("what a change comes to is drawn while it is chosen, and whoever presses a button has the keys at what comes of it", async ({ host, signedIn }) => {
  const tab = await signedIn("administer");
  const coming = tab.page.locator("dialog [data-coming=there]");
  const outcome = tab.page.getByRole("group", { name: "What comes of it" }).and(tab.page.locator(":focus"));
  const hasKeys = (text) => outcome.getByText(text).first().waitFor();
  const disk = async (serial) => tab.page.locator(`dialog input[value="${(await host.disk(serial)).id}"]`);

  await tab.visit(`machine/volume/${(await host.volume("System")).id}`);
  await tab.press("Change volume level");
  await tab.gone("[data-coming]");
  await tab.choose("RAID level", "RAID_5");
  await (await disk("QV48021001C3")).check();
  await coming.locator(".is-coming").getByText("RAID 5").waitFor();
  await coming.getByText(/QV48021001C3 \(new\)/).waitFor();
  await tab.requireAccessible();
  await tab.press("Show the plan");
  await hasKeys("The storage library has the last word.");
  await tab.press("Cancel", tab.page.locator("dialog"));

  const [data] = (await host.ask("GET", "mirn/arrays")).filter(({ name }) => name === "Data_Array");
  for (const [place, change, drawn, fill] of [
    [`array/${data.id}`, "Add array disks", /OD1T9930B1F0 \(new\)/, async () => (await disk("OD1T9930B1F0")).check()],
    [`disk/${(await host.disk("QV48021001C3")).id}`, "Set disk spare: unmark", /QV48021001C3/],
    [`volume/${(await host.volume("Database")).id}`, "Set volume write hole policy: rwh distributed", /Database becomes RWH_DISTRIBUTED/],
  ]) {
    await tab.visit(`machine/${place}`);
    await tab.press(change);
    await fill?.();
    await coming.getByText(drawn).first().waitFor();
    await tab.press("Cancel", tab.page.locator("dialog"));
  }

  await tab.visit(`machine/volume/${(await host.volume("Database")).id}`);
  await tab.press("Set volume write hole policy: rwh journaling drive");
  await tab.requireOff("Show the plan"); // the service asks for a drive, though its document does not
  await tab.gone("[data-coming]");
  await tab.press("Cancel", tab.page.locator("dialog"));

  const { id, type } = await host.disk("OD1T9930B1F0");
  await tab.visit(`machine/disk/${id}`);
  await tab.press("Set disk spare: mark");
  await coming.locator(".coming-disk").getByText(/OD1T9930B1F0 becomes a spare/).waitFor();
  await tab.press("Show the plan");
  await hasKeys("The storage library has the last word.");
  if (await tab.page.locator("#confirmation").isVisible()) await tab.confirm(`${type} OD1T9930B1F0`);
  await tab.press("Do it");
  await hasKeys("It is done.");
});
