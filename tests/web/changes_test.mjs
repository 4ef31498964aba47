// Changes that lead through several steps, by clicks before the running host. All waits are for what comes.
import assert from "node:assert/strict";
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

test("a volume is made in four steps, with what comes of it in sight, and going back keeps what was chosen", async () => {
  const tab = await signedIn("administer");
  await tab.page.getByRole("link", { name: "The machine" }).click();
  await tab.page.getByRole("link", { name: "Make a volume" }).click();
  await tab.see("[data-step='1']");
  const next = tab.page.getByRole("button", { name: "Next" });
  assert.ok(await next.isDisabled());
  await tab.page.getByLabel("Mirrored: each disk holds the same.").check();
  await tab.requireAccessible();
  await next.click();
  await tab.page.getByLabel("A new array, from disks").check();
  const disks = (await host.ask("GET", "mirn/enddevices")).filter((each) => /^TB2T/.test(each.serialNumber));
  assert.equal(disks.length, 2);
  for (const disk of disks) await tab.page.locator(`[data-picker=disks] input[value="${disk.id}"]`).check();
  await tab.see("[data-coming=there]");
  await tab.requireAccessible();
  await next.click();
  await tab.page.getByRole("link", { name: "Back" }).click();
  assert.ok(await tab.page.locator(`input[value="${disks[0].id}"]`).isChecked());
  await tab.page.reload();
  assert.ok(await tab.page.locator(`input[value="${disks[1].id}"]`).isChecked());
  await next.click();
  await tab.page.getByLabel("Name", { exact: true }).fill("Films");
  await tab.page.getByLabel("All that is free").uncheck();
  assert.ok(await next.isDisabled());
  await tab.page.getByLabel("Amount").fill("300");
  await tab.page.locator("[data-coming=there]").getByText("about 300 GB").waitFor();
  await tab.requireAccessible();
  await next.click();
  await tab.page.getByLabel("To go on, type the name: Films").fill("Films");
  await tab.requireAccessible();
  await tab.page.getByRole("button", { name: "Do it" }).click();
  await tab.seeText("The volume has been made.");
  await tab.page.getByRole("link", { name: "See the machine" }).click();
  await tab.see("[data-volume=Films]");
  const made = (await host.ask("GET", "mirn/volumes")).find((each) => each.name === "Films");
  assert.equal(made.raidLevel, "RAID_1");
  assert.ok(Math.abs(Number(made.totalSize) - 300e9) < 1e9);
  await tab.close();
});

test("a disk is replaced step by step; another one that vanishes stops it, and a reload keeps its place", async () => {
  const tab = await signedIn("operate");
  const old = await host.disk("OD3T2210A409");
  const other = await host.disk("OD3T2210A40C");
  const cause = tab.page.locator(`[data-cause="disk-failed-${old.id}"]`);
  await cause.getByRole("link", { name: "Replace this disk" }).click();
  await tab.see("[data-step=light]");
  await tab.requireAccessible();
  await tab.page.getByRole("button", { name: "Light on" }).click();
  await tab.seeText("The light is on.");
  await tab.page.getByRole("button", { name: "I have found the bay" }).click();
  await tab.see("[data-step=pull]");
  await host.ask("POST", "simulator/pull-disk", { disk: other.id });
  await tab.see("[data-lost='1']");
  await tab.seeText(`NVME OD3T2210A40C of bay ${other.address} has gone as well.`);
  await tab.page.locator("[data-step]").waitFor({ state: "detached" });
  await tab.requireAccessible();
  await tab.page.reload();
  await tab.see("[data-lost='1']");
  await host.ask("POST", "simulator/insert-disk", { disk: "OD3T2210A40C" });
  await tab.see("[data-step=pull]");
  await host.ask("POST", "simulator/pull-disk", { disk: old.id });
  await tab.see("[data-step=insert]");
  await tab.page.reload();
  await tab.see("[data-step=insert]");
  await tab.requireAccessible();
  await host.ask("POST", "simulator/insert-blank-disk", { disk: "OD3T2210A409" });
  await tab.see("[data-step=take]");
  await tab.requireAccessible();
  await tab.page.getByRole("button", { name: "Rebuild volume: Archive" }).click();
  await tab.page.getByRole("button", { name: "Show the plan" }).click();
  await tab.page.getByLabel("To go on, type the name: Archive").fill("Archive");
  await tab.page.getByRole("button", { name: "Do it" }).click();
  await tab.seeText("It is done.");
  await tab.page.getByRole("button", { name: "Close" }).click();
  await tab.see("[data-step=out]");
  await tab.requireAccessible();
  await tab.page.getByRole("button", { name: "Finish" }).click();
  await tab.seeText("Rebuild: Archive");
  assert.equal(await tab.page.evaluate(() => Object.keys(sessionStorage).filter((key) => key.startsWith("replace")).length), 0);
  await tab.close();
});

test("what is of the machine as a whole is done from its page", async () => {
  const tab = await signedIn("administer");
  await tab.page.goto(`${host.address}#/machine`);
  await tab.page.getByRole("button", { name: "Set config" }).click();
  await tab.page.getByLabel("How long a bay's light stays on").fill("30");
  await tab.requireAccessible();
  await tab.page.getByRole("button", { name: "Show the plan" }).click();
  await tab.page.getByRole("button", { name: "Do it" }).click();
  await tab.seeText("It is done.");
  await tab.page.getByRole("button", { name: "Close" }).click();
  await tab.page.getByRole("button", { name: "Rescan" }).click();
  await tab.page.getByRole("button", { name: "Show the plan" }).click();
  await tab.page.getByRole("button", { name: "Do it" }).click();
  await tab.seeText("It is done.");
  await tab.requireAccessible();
  assert.equal((await host.ask("GET", "mirn/config")).locate_timeout.value, 12); // until the host is started anew
  await tab.close();
});
