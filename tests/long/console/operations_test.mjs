// Each operation that changes something is done once by what the console offers. Which there are the document tells; which
// were done, the requests of the pages that were answered well.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { after } from "node:test";
import { calmMachine } from "../../web/machines.mjs";
import { onOwnHosts } from "../../web/stage.mjs";

const kDocument = JSON.parse(readFileSync(new URL("../../../docs/openapi.json", import.meta.url), "utf8"));
const kNotOffered = {
  makeSignInCode: "the host prints addresses that sign in, at its terminal and by a command on the server",
  simulatorCapEventWait: "how long a library's call waits is for who tests that",
  simulatorCheck: "the simulator's look at itself is for who tests it",
  simulatorClearFaults: "goes with the faults of calls",
  simulatorCountCalls: "calls of the library are for who tests those",
  simulatorDelayCalls: "calls of the library are for who tests those",
  simulatorFailCalls: "calls of the library are for who tests those",
  simulatorLoadScenario: "another machine is a file, which the host is started with",
  simulatorLockDisk: "a lock is set by a disk's owner; the drawer has what befalls disks by chance",
};

/** What a request was, by the document. */
const kOperations = Object.entries(kDocument.paths).flatMap(([path, item]) =>
  Object.entries(item).map(([method, { operationId, "x-mirn": own }]) => ({
    id: operationId,
    method: method.toUpperCase(),
    pattern: new RegExp(`^${path.replace(/\{\w+\}/g, "[^/]+")}$`),
    isChange: method !== "get" && own.effect !== "read",
  })),
);
const operationOf = (request) =>
  kOperations.find(({ method, pattern }) => method === request.method() && pattern.test(new URL(request.url()).pathname));

const done = new Set();
const story = onOwnHosts({ clockSpeed: 0 });

/** From here on what the tab's pages do counts. */
function follow(tab) {
  tab.page.on("response", (answer) => {
    const operation = operationOf(answer.request());
    const isDeed = !new URL(answer.url()).searchParams.has("dryRun");
    if (operation?.isChange && isDeed && answer.ok()) done.add(operation.id);
  });
  return tab;
}

const kFreeSata = "TB2T7790315";
const kFreeLyx = "OD1T9930B1F0";
const nameOf = ({ type, serialNumber }) => `${type} ${serialNumber}`;

/** Somebody before the panel of an object. */
async function before(signedIn, place) {
  const tab = follow(await signedIn("administer"));
  await tab.visit(place);
  await tab.see("[data-panel]");
  return tab;
}

const ofDisk = (operation, serial, button, options = () => ({})) =>
  story(operation, async ({ host, signedIn }) => {
    const disk = await host.disk(serial);
    const tab = await before(signedIn, `machine/disk/${disk.id}`);
    await tab.change(button, options(disk));
  });
const named = (disk) => ({ mayLose: nameOf(disk) });

ofDisk("clearDisk", kFreeSata, "Clear disk", named);
ofDisk("markDiskNormal", "OD3T2210A409", "Mark disk normal", named);
ofDisk("resetDiskSmart", "TB4T6610092", "Reset disk smart");
ofDisk("setDiskSpare", kFreeSata, "Set disk spare: mark", named);
ofDisk("removeDisk", kFreeLyx, "Remove disk");

const ofController = (operation, button) =>
  story(operation, async ({ host, signedIn }) => {
    const [controller] = await host.ask("GET", "mirn/controllers");
    const tab = await before(signedIn, `machine/controller/${controller.id}`);
    await tab.change(button);
  });

ofController("setControllerReadPatrol", "Set controller read patrol: enabled");
ofController("setControllerRohi", "Set controller rohi: enabled");

const ofArray = (operation, name, button, options) =>
  story(operation, async ({ host, signedIn }) => {
    const array = (await host.ask("GET", "mirn/arrays")).find((each) => each.name === name);
    const tab = await before(signedIn, `machine/array/${array.id}`);
    await tab.change(button, await options?.(tab, host));
  });

const chooseDisk = async (tab, host, serial) => {
  const { id } = await host.disk(serial);
  await tab.page.locator(`dialog input[value="${id}"]`).check();
};

ofArray("addArrayDisks", "Data_Array", "Add array disks", (tab, host) => ({
  fill: () => chooseDisk(tab, host, kFreeLyx),
  mayLose: "Data_Array",
}));
ofArray("setArrayWriteCache", "System_Array", "Set array write cache: disabled");

const ofVolume = (operation, name, button, options, { failed = null, machine = null } = {}) =>
  story(
    operation,
    async ({ host, signedIn }) => {
      if (failed) await host.befall("fail-disk", failed);
      const tab = await before(signedIn, `machine/volume/${(await host.volume(name)).id}`);
      await tab.change(button, await options?.(tab, host));
    },
    { machine },
  );

ofVolume("renameVolume", "Scratch", "Rename volume", (tab) => ({ fill: () => tab.fill("Name", "Renamed") }));
ofVolume("deleteVolume", "Scratch", "Delete volume", () => ({ mayLose: "Scratch" }));
ofVolume("initializeVolume", "Database", "Initialize volume", () => ({ mayLose: "Database" }));
ofVolume("setVolumeCachePolicy", "Scratch", "Set volume cache policy: write back");
ofVolume("verifyVolume", "Database", "Verify volume: start", (tab) => ({ fill: () => tab.choose("Repair", "true") }));
ofVolume("setVolumeWriteHolePolicy", "Archive", "Set volume write hole policy: rwh off");
ofVolume("resizeVolume", "Archive", "Resize volume", (tab) => ({ fill: () => tab.tick("All that is free") }), {
  machine: calmMachine(),
});
ofVolume("changeVolumeLevel", "System", "Change volume level", (tab, host) => ({
  fill: async () => {
    await tab.choose("RAID level", "RAID_5");
    await chooseDisk(tab, host, kFreeSata);
  },
  mayLose: "System",
}));
ofVolume("rebuildVolume", "Archive", "Rebuild volume", (tab, host) => ({
  fill: async () => tab.choose("Disk", (await host.disk("OD3T2210A40C")).id),
  mayLose: "Archive",
}));
ofVolume("markVolumeNormal", "Scratch", "Mark volume normal", () => ({ mayLose: "Scratch" }), {
  failed: "OD1T9930B11A",
});

story("createVolume", async ({ host, signedIn }) => {
  const tab = follow(await signedIn("administer"));
  await tab.follow("The machine");
  await tab.follow("Make a volume");
  await tab.tick("Striped over the disks, each piece once.");
  await tab.press("Next");
  await tab.tick("A new array, from disks");
  for (const serial of [kFreeSata, "TB2T7790318"]) {
    await tab.page.locator(`[data-picker=disks] input[value="${(await host.disk(serial)).id}"]`).check();
  }
  await tab.press("Next");
  await tab.fill("Name", "Fresh");
  await tab.press("Next");
  await tab.confirm("Fresh");
  await tab.press("Do it");
  await tab.seeText("The volume has been made.");
  assert.equal((await host.volume("Fresh")).raidLevel, "RAID_0");
});

story("rescan and setConfig", async ({ signedIn }) => {
  const tab = follow(await signedIn("administer"));
  await tab.visit("machine");
  await tab.change("Rescan");
  await tab.change("Set config", { fill: () => tab.fill("How long a bay's light stays on", "30") });
});

story("locatePort", async ({ host, signedIn }) => {
  const tab = await before(signedIn, `machine/disk/${(await host.disk(kFreeSata)).id}`);
  await tab.press("Light on");
  await tab.seeText("The light is on.");
});

story("acknowledgeAlarm", async ({ signedIn }) => {
  const tab = follow(await signedIn("operate"));
  await tab.follow("Alarms");
  await tab.button("Take notice").first().click();
  await tab.seeText("Noticed by");
});

story("beginSession and endSession", async ({ host, open }) => {
  const tab = follow(await open());
  await tab.page.goto(await host.signInAddress("observe"));
  await tab.see("[data-role=observe]");
  await tab.press("Sign out");
  await tab.see("#token");
});

story("what befalls disks and time, out of the simulator's drawer", async ({ host, signedIn }) => {
  const tab = follow(await signedIn("administer"));
  const { id } = await host.disk(kFreeSata);
  await tab.openDrawer();
  const gone = () => tab.gone(`#simulated-disk option[value="${id}"]`);
  await tab.choose("A disk of the machine", id);
  await tab.press("Let it warn");
  await tab.seeCauses(`disk-smart-${id}`);
  await tab.press("Let it fail");
  await tab.seeCauses(`disk-failed-${id}`);
  await tab.press("Pull it out");
  await gone();
  await tab.choose("A disk that has been pulled out", kFreeSata);
  await tab.press("Put it back");
  await tab.page.locator(`#simulated-disk option[value="${id}"]`).waitFor({ state: "attached" });
  await tab.choose("A disk of the machine", id);
  await tab.press("Pull it out");
  await gone();
  await tab.choose("A disk that has been pulled out", kFreeSata);
  await tab.press("Put a new one in its bay");
  await tab.gone("#pulled-disk");
  await tab.press("An hour later");
  const speed = tab.button("60 times as fast");
  await speed.click();
  await tab.page.waitForFunction((button) => !button.disabled, await speed.elementHandle());
});

after(() => {
  const offered = kOperations.filter(({ id, isChange }) => isChange && !(id in kNotOffered)).map(({ id }) => id);
  assert.ok(offered.length > 20);
  assert.deepEqual(offered.filter((id) => !done.has(id)), [], "operations that were not done");
  assert.deepEqual(Object.keys(kNotOffered).filter((id) => done.has(id)), [], "operations that the console offers after all");
  const known = new Set(kOperations.map(({ id }) => id));
  assert.deepEqual(Object.keys(kNotOffered).filter((id) => !known.has(id)), [], "operations that the document does not tell of");
});
