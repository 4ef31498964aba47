// What is out of use for whom, on every page, and with which words.
import assert from "node:assert/strict";
import { onOneHost } from "../../web/stage.mjs";

const story = onOneHost({ clockSpeed: 0 });
const takes = (needed, own) => `This takes the role "${needed}"; yours is "${own}"`;
const kRoles = ["observe", "operate", "administer"];

/** Where something is offered, and which role it takes at least; what it is needs nothing else of the machine. */
const kOffers = [
  ["overview", "Reset disk smart", "operate"],
  ["overview", "Rebuild volume", "operate"],
  ["overview", "Mark disk normal", "administer"],
  ["machine", "Make a volume", "administer"],
  ["machine", "Rescan", "operate"],
  ["machine", "Set config", "administer"],
  ["machine/disk/DISK", "Light on", "operate"],
  ["machine/disk/DISK", "Set disk spare: mark", "operate"],
  ["machine/disk/DISK", "Clear disk", "administer"],
  ["machine/volume/VOLUME", "Rename volume", "operate"],
  ["machine/volume/VOLUME", "Delete volume", "administer"],
  ["machine/array/ARRAY", "Add array disks", "administer"],
  ["machine/controller/CONTROLLER", "Set controller rohi: enabled", "administer"],
  ["replace/DISK", "Light on", "operate"],
  ["jobs", "Verify volume: cancel", "operate"],
  ["alarms", "Take notice", "operate"],
  ["history", "Export the history", "administer"],
  ["readiness", "Verify volume", "operate"],
  ["settings", "Store", "administer"],
  ["about", "Get the file", "administer"],
];
const kDrawer = [["overview", "An hour later", "administer"]];

const reaches = (own, needed) => kRoles.indexOf(own) >= kRoles.indexOf(needed);

async function idsOf(host) {
  const [array] = await host.ask("GET", "mirn/arrays");
  const [controller] = await host.ask("GET", "mirn/controllers");
  const { id: DISK } = await host.disk("TB2T7790315");
  const { id: VOLUME } = await host.volume("Scratch");
  return { DISK, VOLUME, ARRAY: array.id, CONTROLLER: controller.id };
}

const addressOf = (place, ids) => place.replace(/[A-Z]+$/, (name) => ids[name]);

/** In use, or out of use with its reason beside it. */
async function requireOffer(tab, [place, label, needed], own) {
  const offer = tab.page.locator("button, a.button", { hasText: label }).first();
  await offer.waitFor();
  const isOff = async () => (await offer.evaluate((each) => each.tagName)) === "BUTTON" && (await offer.isDisabled());
  if (reaches(own, needed)) {
    assert.ok(!(await isOff()), `${own} cannot use "${label}" of ${place}`);
    return;
  }
  await tab.page.getByText(takes(needed, own)).first().waitFor();
  assert.ok(await isOff(), `${own} can use "${label}" of ${place}`);
}

for (const role of kRoles) {
  story(`what ${role} may, and may not, on every page`, async ({ host, signedIn }) => {
    const volume = await host.volume("System");
    if (!(await host.ask("GET", "jobs")).items.length) {
      await host.ask("PUT", `mirn/volumes/${volume.id}/verify`, { action: "START", repair: true });
    }
    const ids = await idsOf(host);
    const tab = await signedIn(role);
    let last = null;
    for (const offer of kOffers) {
      if (offer[0] !== last) {
        await tab.visit(addressOf(offer[0], ids));
        await tab.see("main h1");
        await tab.settled();
      }
      last = offer[0];
      await requireOffer(tab, offer, role);
    }
    await tab.visit("overview");
    await tab.openDrawer();
    for (const offer of kDrawer) await requireOffer(tab, offer, role);
  });
}

story("each page of the menu is among those that roles are held to, or offers nothing", async ({ signedIn }) => {
  const tab = await signedIn("observe");
  const pages = await tab.page.locator("#page-links a").evaluateAll((all) => all.map((each) => each.hash.slice(2)));
  const held = new Set(kOffers.map(([place]) => place.split("/")[0]));
  assert.deepEqual(pages.filter((page) => !held.has(page)), ["whatif", "access"]); // asks, and ends one's own session
});

story("what nobody may see is not asked for", async ({ signedIn }) => {
  const tab = await signedIn("observe");
  const pages = await tab.page.locator("#page-links a").evaluateAll((all) => all.map((each) => each.hash.slice(2)));
  for (const page of pages) {
    await tab.visit(page);
    await tab.see("main h1");
    await tab.settled();
  }
  await tab.visit("history");
  assert.ok(await tab.page.locator("#filter-kind option[value=audit]").isDisabled());
});

story("each object of the picture opens for who observes", async ({ host, signedIn }) => {
  const tab = await signedIn("observe");
  const lists = { controller: "controllers", array: "arrays", volume: "volumes", disk: "enddevices" };
  for (const [type, list] of Object.entries(lists)) {
    for (const { id } of await host.ask("GET", `mirn/${list}`)) {
      await tab.visit(`machine/${type}/${id}`);
      await tab.see(`[data-panel=${type}] dl`);
      await tab.settled();
    }
  }
});
