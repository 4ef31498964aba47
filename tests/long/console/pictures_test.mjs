// Each page at three widths, light and dark, in each language, as a picture for people to look at; MIRN_PICTURES names their
// folder. What a program can judge is judged here: nothing runs out of the window, no text is cut, axe finds nothing.
import assert from "node:assert/strict";
import path from "node:path";
import { onOneHost } from "../../web/stage.mjs";
import { addressesOf } from "./addresses.mjs";

const story = onOneHost();
const kSizes = { telephone: { width: 390, height: 844 }, desk: { width: 1280, height: 800 }, wall: { width: 2560, height: 1440 } };
const kLocales = ["en-GB", "de-DE"];

/** Texts that are wider than what holds them, where the rest is hidden. */
const cutTexts = (page) =>
  page.evaluate(() =>
    [...document.querySelectorAll("body *")]
      .filter((each) => each.scrollWidth > each.clientWidth + 1 && each.clientWidth > 1)
      .filter((each) => /hidden|clip/.test(getComputedStyle(each).overflowX) && each.innerText?.trim())
      .map((each) => `${each.className}: ${each.innerText}`),
  );

async function judge(tab, size, name) {
  await tab.settled();
  if (process.env.MIRN_PICTURES) {
    const file = `${name.replace(/[/]\d+$/, "").replaceAll("/", "-")}.png`;
    await tab.page.screenshot({ path: path.join(process.env.MIRN_PICTURES, size, file), fullPage: true });
  }
  await tab.requireNoOverflow(name);
  assert.deepEqual(await cutTexts(tab.page), [], name);
  await tab.requireAccessible();
}

for (const locale of kLocales) {
  for (const colorScheme of ["light", "dark"]) {
    for (const [size, viewport] of Object.entries(kSizes)) {
      const folder = `${size}-${colorScheme}-${locale.slice(0, 2)}`;
      const options = { locale, colorScheme, viewport, reducedMotion: "reduce" };
      story(`each page fits: ${folder}`, async ({ host, open, signedIn }) => {
        const stranger = await open(options);
        await stranger.page.goto(host.address);
        await stranger.see("main h1");
        await judge(stranger, folder, "sign-in");
        const tab = await signedIn("administer", options);
        for (const address of await addressesOf(tab, host)) {
          await tab.visit(address);
          await tab.see("main h1");
          await judge(tab, folder, address);
        }
      });
    }
  }
}
