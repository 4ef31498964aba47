// Twelve things that befall a machine, told by clicks: the outside world acts, the page follows, and somebody does what the
// page offers, until it says that nothing is wrong. Each begins on a calm machine whose clock is moved by hand.
import assert from "node:assert/strict";

const kFirstMirror = "QV48021000A1"; // of the volume System, the second one beside it
const kSecondMirror = "QV48021000A7";
const kSpare = "QV48021001C3";
const kFreeSata = "TB2T7790315";
const kMemberOfData = "OD1T9930B11A";
const kSpareOfData = "OD1T9930B1F0";
const kJournalDrive = "OP375C0071";
const kSomeOfTheWork = 1000; // seconds
const kLong = 200_000; // seconds in which all work ends

/** The ids of causes stay while objects come and go. */
const ofVolume = async (host, kind, name) => `${kind}-${(await host.volume(name)).id}`;
const ofDisk = async (host, kind, serial) => `${kind}-${(await host.disk(serial)).id}`;
const ofArray = async (host, kind, name) =>
  `${kind}-${(await host.ask("GET", "mirn/arrays")).find((each) => each.name === name).id}`;

/** The picture's panel of a disk. */
async function openDisk(tab, serial) {
  await tab.follow("The machine");
  await tab.page.locator(`[data-disk="${serial}"]`).click();
  await tab.see("[data-panel=disk]");
}

async function openVolume(tab, name) {
  await tab.follow("The machine");
  await tab.page.locator(`[data-volume="${name}"]`).click();
  await tab.see("[data-panel=volume]");
}

const toFirstPage = (tab) => tab.follow("What is wrong");

/** A disk is no spare any more. */
async function unmarkSpare(tab, serial) {
  await openDisk(tab, serial);
  await tab.change("Set disk spare: unmark");
  await toFirstPage(tab);
}

/** From what is wrong with a spare that lacks to a disk that becomes one. */
async function markSpare(tab, host, cause, serial, name) {
  const disk = await host.disk(serial);
  await tab.change("Set disk spare", { within: tab.cause(cause), fill: () => tab.choose("Which disk", disk.id), name });
  await tab.seeNoCauses(cause);
}

/** The guided path from the link that is on the page to the new disk in the bay; the outside world pulls and inserts. */
async function exchange(tab, host, serial, within = tab.page) {
  await tab.follow("Replace this disk", within);
  if (await host.disk(serial)) {
    await tab.see("[data-step=light]");
    await tab.press("Light on");
    await tab.seeText("The light is on.");
  }
  await tab.press("I have found the bay");
  await tab.see("[data-step=pull], [data-step=insert]");
  if (await tab.page.locator("[data-step=pull]").count()) await host.befall("pull-disk", serial);
  await tab.see("[data-step=insert]");
  const { disk } = await host.befall("insert-blank-disk", serial);
  await tab.press("Look again"); // where no hot-plug is managed, nobody notices by himself
  await tab.see("[data-step=take]");
  return disk;
}

async function finish(tab) {
  await tab.see("[data-step=out]");
  await tab.press("Finish");
  await tab.see("[data-severity]");
}

/** A disk that nothing stands on any more makes room for a new spare. */
async function exchangeForSpare(tab, host, serial, within) {
  const fresh = await exchange(tab, host, serial, within);
  const { type } = await host.disk(fresh);
  await tab.change("Set disk spare: mark", { name: `${type} ${fresh}` });
  await finish(tab);
}

/** Work ends in its time, and its volume has its redundancy again. */
async function workEnds(tab, host, ...causes) {
  await host.passTime(kLong);
  await tab.seeNoCauses(...causes);
  await tab.seeText("No work is running.");
}

async function seeWork(tab, kind, volume) {
  await tab.page.locator("[data-job]", { hasText: `${kind}: ${volume}` }).waitFor();
}

/** How far the work is that the page shows. */
async function percent(tab) {
  return Number(await tab.page.locator("[data-job] progress").first().getAttribute("value"));
}

const seePercentFrom = (tab, least) =>
  tab.page.waitForFunction((from) => Number(document.querySelector("[data-job] progress")?.value) >= from, least);

export const kMachineStories = {
  "a disk fails and a spare takes over": async ({ host, signedIn }) => {
    const tab = await signedIn("operate");
    await tab.seeCalm();
    const degraded = await ofVolume(host, "volume-degraded", "System");
    const failed = await ofDisk(host, "disk-failed", kSecondMirror);
    await host.befall("fail-disk", kSecondMirror);
    await tab.seeCauses(degraded, failed);
    await seeWork(tab, "Rebuild", "System");
    await tab.seeText("begun by the machine itself");
    await host.passTime(kSomeOfTheWork);
    await seePercentFrom(tab, 1);
    await workEnds(tab, host, degraded);
    await exchangeForSpare(tab, host, kSecondMirror, tab.cause(failed));
    await tab.seeCalm();
  },

  "a disk fails and there is no spare": async ({ host, signedIn }) => {
    const tab = await signedIn("operate");
    const degraded = await ofVolume(host, "volume-degraded", "System");
    const failed = await ofDisk(host, "disk-failed", kSecondMirror);
    const spareless = await ofArray(host, "no-spare-fits", "System_Array");
    await unmarkSpare(tab, kSpare);
    await tab.seeCauses(spareless);
    await host.befall("fail-disk", kSecondMirror);
    await tab.seeCauses(degraded);
    await tab.seeText("No work is running.");
    const disk = await host.disk(kFreeSata);
    await tab.change("Rebuild volume", { within: tab.cause(degraded), fill: () => tab.choose("Disk", disk.id), name: "System" });
    await seeWork(tab, "Rebuild", "System");
    await workEnds(tab, host, degraded);
    await exchangeForSpare(tab, host, kSecondMirror, tab.cause(failed));
    await tab.seeCalm();
  },

  "a second disk fails during a rebuild": async ({ host, signedIn }) => {
    const tab = await signedIn("administer");
    const lost = await ofVolume(host, "volume-failed", "System");
    const degraded = await ofVolume(host, "volume-degraded", "System");
    const first = await ofDisk(host, "disk-failed", kFirstMirror);
    const second = await ofDisk(host, "disk-failed", kSecondMirror);
    await host.befall("fail-disk", kSecondMirror);
    await host.passTime(kSomeOfTheWork);
    await seePercentFrom(tab, 1);
    await host.befall("fail-disk", kFirstMirror);
    await tab.seeCauses(lost, first, second);
    await tab.seeText("No work is running.");
    const { type } = await host.disk(kFirstMirror);
    await tab.change("Mark disk normal", { within: tab.cause(first), name: `${type} ${kFirstMirror}` });
    await tab.seeNoCauses(lost, first);
    await workEnds(tab, host, degraded);
    await exchangeForSpare(tab, host, kSecondMirror, tab.cause(second));
    await tab.seeCalm();
  },

  "a disk is pulled and put back": async ({ host, signedIn }) => {
    const tab = await signedIn("operate");
    await unmarkSpare(tab, kSpareOfData);
    const spareless = await ofArray(host, "no-spare-fits", "Data_Array");
    const degraded = await ofVolume(host, "volume-degraded", "Database");
    const lost = await ofVolume(host, "volume-failed", "Scratch");
    const missing = await ofDisk(host, "disk-missing", kMemberOfData);
    await host.befall("pull-disk", kMemberOfData);
    await tab.seeCauses(degraded, lost, missing);
    await host.befall("insert-disk", kMemberOfData);
    await tab.seeNoCauses(lost, missing);
    await workEnds(tab, host, degraded);
    await markSpare(tab, host, spareless, kSpareOfData, `Lyx ${kSpareOfData}`);
    await tab.seeCalm();
  },

  "a disk warns that it may fail": async ({ host, signedIn }) => {
    const tab = await signedIn("operate");
    const warned = await ofDisk(host, "disk-smart", kFreeSata);
    await host.befall("raise-smart-event", kFreeSata);
    await tab.seeCauses(warned);
    await tab.change("Reset disk smart", { within: tab.cause(warned) });
    await tab.seeCalm();
  },

  "a verification finds errors": async ({ host, signedIn }) => {
    const tab = await signedIn("operate");
    const wrong = await ofVolume(host, "verify-errors", "Database");
    const workEndsOf = async () => {
      await seeWork(tab, "Verification", "Database");
      await workEnds(tab, host);
    };
    await openVolume(tab, "Database");
    await tab.change("Verify volume: start", { fill: () => tab.choose("Repair", "false") });
    await toFirstPage(tab);
    await workEndsOf();
    await tab.seeCauses(wrong);
    // The first one mends what it finds, and tells of it; the second one finds nothing any more.
    for (let times = 0; times < 2; times += 1) {
      await tab.change("Verify volume", { within: tab.cause(wrong) });
      await workEndsOf();
    }
    await tab.seeCalm();
  },

  "a volume changes its level over a restart of the host": async ({ host, withToken }) => {
    const tab = await withToken();
    tab.expectCut();
    const disk = await host.disk(kFreeSata);
    await openVolume(tab, "System");
    await tab.change("Change volume level", {
      fill: async () => {
        await tab.choose("RAID level", "RAID_5");
        await tab.page.locator(`dialog input[value="${disk.id}"]`).check();
      },
      name: "System",
    });
    await toFirstPage(tab);
    await seeWork(tab, "Change of level or size", "System");
    await host.passTime(kSomeOfTheWork);
    await seePercentFrom(tab, 1);
    const job = await tab.page.locator("[data-job]").getAttribute("data-job");
    const before = await percent(tab);
    await host.stop();
    await tab.see("[data-freshness=cut]");
    await host.start();
    await tab.see("[data-freshness=live]");
    await tab.see(`[data-job="${job}"]`);
    await seePercentFrom(tab, before);
    await workEnds(tab, host);
    assert.equal((await host.volume("System")).raidLevel, "RAID_5");
    await tab.seeCalm();
  },

  "the host is killed amid a rebuild": async ({ host, withToken }) => {
    const tab = await withToken();
    tab.expectCut();
    const degraded = await ofVolume(host, "volume-degraded", "System");
    const failed = await ofDisk(host, "disk-failed", kSecondMirror);
    await host.befall("fail-disk", kSecondMirror);
    await tab.seeCauses(degraded);
    await host.passTime(kSomeOfTheWork);
    await seePercentFrom(tab, 1);
    await host.crash();
    await tab.see("[data-freshness=cut]");
    await tab.seeCauses(degraded, failed); // what it last saw
    await host.start();
    await tab.see("[data-freshness=live]");
    await seeWork(tab, "Rebuild", "System");
    await workEnds(tab, host, degraded);
    await exchangeForSpare(tab, host, kSecondMirror, tab.cause(failed));
    await tab.seeCalm();
  },

  "a disk is locked": async ({ host, signedIn }) => {
    const tab = await signedIn("operate");
    const locked = await ofDisk(host, "disk-locked", kFreeSata);
    const { type } = await host.disk(kFreeSata);
    await host.befall("lock-disk", kFreeSata);
    await tab.seeCauses(locked);
    // A look at the machine anew tells nothing else: another disk takes its place.
    await tab.change("Rescan", { within: tab.cause(locked) });
    await tab.seeCauses(locked);
    await tab.cause(locked).getByRole("link", { name: `${type} ${kFreeSata}` }).last().click();
    await tab.see("[data-panel=disk]");
    await exchange(tab, host, kFreeSata);
    await tab.press("Leave it as it is");
    await finish(tab);
    await tab.seeCalm();
  },

  "the journaling drive is lost": async ({ host, signedIn }) => {
    const tab = await signedIn("administer");
    const lost = await ofVolume(host, "journaling-drive-lost", "Database");
    const missing = await ofDisk(host, "disk-missing", kJournalDrive);
    await host.befall("pull-disk", kJournalDrive);
    await tab.seeCauses(lost, missing);
    await tab.change("Set volume write hole policy", {
      within: tab.cause(lost),
      fill: () => tab.choose("Write-hole policy", "RWH_DISTRIBUTED"),
    });
    await tab.seeNoCauses(lost);
    await host.befall("insert-disk", kJournalDrive);
    await tab.seeNoCauses(missing);
    await tab.seeCalm();
  },

  "a system disk is replaced": async ({ host, signedIn }) => {
    const tab = await signedIn("operate");
    const degraded = await ofVolume(host, "volume-degraded", "System");
    const spareless = await ofArray(host, "no-spare-fits", "System_Array");
    const missing = await ofDisk(host, "disk-missing", kFirstMirror);
    await unmarkSpare(tab, kSpare);
    await host.befall("pull-disk", kFirstMirror);
    await tab.seeCauses(degraded, missing);
    await exchange(tab, host, kFirstMirror, tab.cause(missing));
    await tab.change("Rebuild volume: System", { name: "System" });
    await finish(tab);
    await seeWork(tab, "Rebuild", "System");
    await workEnds(tab, host, degraded);
    await markSpare(tab, host, spareless, kSpare, `SATA ${kSpare}`);
    await tab.seeCalm();
  },

  "the library refuses and comes back": async ({ host, signedIn }) => {
    const tab = await signedIn("operate");
    await host.failCalls("VexGetVolumeInfo");
    await tab.follow("The machine");
    await tab.change("Rescan");
    await toFirstPage(tab);
    // The change is looked at while the library still refuses: its cause may go by itself as soon as that has come back.
    await tab.change("Rescan", { within: tab.page.locator("[data-cause^=picture-old]"), fill: () => host.clearFaults() });
    await tab.seeCalm();
  },
};
