// Each page by keys alone, at a desk: every control is reached in order, is seen when the keys are there, and lets them go.
import assert from "node:assert/strict";
import { onOneHost } from "../../web/stage.mjs";
import { addressesOf } from "./addresses.mjs";
import { tabTo, walk, walkDialog } from "./keyboard_walk.mjs";

const story = onOneHost({ clockSpeed: 0 });
const kDesk = { viewport: { width: 1280, height: 800 }, reducedMotion: "reduce" };

/** A page that has its first answers. */
async function come(tab, address) {
  await tab.visit(address);
  await tab.see("main h1");
  await tab.settled();
}

story("each page is walked by Tab, forth and back", async ({ host, signedIn }) => {
  const tab = await signedIn("administer", kDesk);
  for (const address of await addressesOf(tab, host)) {
    await come(tab, address);
    await walk(tab, address);
  }
});

story("the drawer is opened by a key, and walked like the rest", async ({ signedIn }) => {
  const tab = await signedIn("administer", kDesk);
  await come(tab, "about");
  await tabTo(tab, tab.page.locator("summary", { hasText: "Simulator and lessons" }));
  await tab.page.keyboard.press("Enter");
  await tab.see("#lesson");
  await walk(tab, "the drawer");
});

story("a dialog keeps the keys until it is left by Escape, and gives them back to its button", async ({ host, signedIn }) => {
  const tab = await signedIn("administer", kDesk);
  const volume = await host.volume("Scratch");
  await come(tab, `machine/volume/${volume.id}`);
  for (const name of ["Rename volume", "Delete volume", "Verify volume: start"]) {
    const button = tab.button(name);
    await tabTo(tab, button);
    await tab.page.keyboard.press("Enter");
    await tab.see("dialog[data-change] button");
    await walkDialog(tab, name);
    await tab.page.keyboard.press("Escape");
    await tab.gone("dialog");
    assert.ok(await button.evaluate((each) => each === document.activeElement), `${name}: its button has the keys again`);
  }
});

story("a level of the wizard is chosen by the arrows, and the way goes on by keys", async ({ signedIn }) => {
  const tab = await signedIn("administer", kDesk);
  await come(tab, "create");
  await tabTo(tab, tab.page.locator("input[name=level]:enabled").first());
  const chosen = () => tab.page.locator("input[name=level]").evaluateAll((all) => all.findIndex((each) => each.checked));
  await tab.page.keyboard.press("ArrowDown");
  const first = await chosen();
  assert.ok(first >= 0, "an arrow chooses");
  await tab.page.keyboard.press("ArrowUp");
  assert.notEqual(await chosen(), first);
  await tabTo(tab, tab.button("Next"));
  await tab.page.keyboard.press("Enter");
  await tab.see("[data-step='2']");
  assert.equal(await tab.page.evaluate(() => document.activeElement.id), "step-title");
});

story("a degraded volume is rebuilt by keys alone", async ({ host, signedIn }) => {
  const tab = await signedIn("operate", kDesk);
  const { keyboard } = tab.page;
  const volume = await host.volume("Archive");
  const told = await host.ask("GET", `actions/volume/${volume.id}/rebuildVolume/diskId`);
  await tabTo(tab, tab.button("Rebuild volume", tab.cause(`volume-degraded-${volume.id}`)));
  await keyboard.press("Enter");
  const select = tab.field("Disk");
  await tab.page.waitForFunction(() => document.querySelectorAll("dialog option:enabled").length > 1);
  await tabTo(tab, select);
  await keyboard.press("ArrowDown");
  const disk = await select.inputValue();
  assert.ok(told.items.some((each) => each.allowed && each.value === disk), "an arrow chooses a disk that can be had");
  await tabTo(tab, tab.button("Show the plan"));
  await keyboard.press("Enter");
  await tab.see("#confirmation");
  await tabTo(tab, tab.page.locator("#confirmation"), 20);
  await keyboard.type("Archive");
  await tabTo(tab, tab.button("Do it"), 20);
  await keyboard.press("Enter");
  await tab.seeText("It is done.");
  await tabTo(tab, tab.button("Close", tab.page.locator("dialog")), 20);
  await keyboard.press("Enter");
  await tab.gone("dialog");
  await tab.seeText("Rebuild: Archive");
});
