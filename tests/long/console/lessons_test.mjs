// Each lesson of the simulator's drawer by clicks, to its end.
//
//   MIRN_HOST=.../mirn-host MIRN_MODULE=.../mirn_plugin.so node --test tests/long/console/lessons_test.mjs
import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { Host, startBrowser, Tab } from "../../web/browser.mjs";

let browser;
before(async () => {
  browser = await startBrowser();
});
after(() => browser?.close());

/** The next step is done by the drawer's own button. */
const act = (tab) => tab.page.getByRole("button", { name: "Do it now" }).click();
const go = (tab) => tab.page.getByRole("link", { name: "Go there" }).click();

/** A change out of the panel of an object, with what is chosen in it. */
async function change(tab, button, fill = async () => undefined) {
  await tab.page.getByRole("button", { name: button }).click();
  await tab.see("dialog[data-change]");
  await fill();
  await tab.page.getByRole("button", { name: "Show the plan" }).click();
  await tab.page.getByRole("button", { name: "Do it", exact: true }).click();
  await tab.seeText("It is done.");
  await tab.page.getByRole("button", { name: "Close" }).click();
}
const verify = (tab) =>
  change(tab, "Verify volume: start", () => tab.page.getByLabel("Repair").selectOption("true"));

const kLessons = {
  recover: [act, go, null, act],
  return: [act, go, act],
  exchange: [act, act, go],
  notice: [
    act,
    go,
    async (tab) => {
      const told = await tab.page.locator(".lesson-step[aria-current]").innerText();
      const disk = /disk (\S+ \S+)\./.exec(told)[1];
      const card = tab.page.locator("[data-alarm]", { hasText: disk });
      await card.getByRole("button", { name: "Take notice" }).click();
    },
  ],
  light: [
    async (tab) => {
      await go(tab);
      await tab.page.getByRole("button", { name: "Light on" }).click();
    },
    go,
  ],
  verify: [
    async (tab) => {
      await go(tab);
      await verify(tab);
    },
    go,
    act,
  ],
  cancel: [
    async (tab) => {
      await go(tab);
      await verify(tab);
    },
    async (tab) => {
      await go(tab);
      await change(tab, "Verify volume: cancel");
    },
  ],
  rename: [
    async (tab) => {
      await go(tab);
      await change(tab, "Rename volume", () => tab.page.getByLabel("Name", { exact: true }).fill("Renamed"));
    },
  ],
};

for (const [lesson, steps] of Object.entries(kLessons)) {
  test(`the lesson "${lesson}" comes to its end`, async () => {
    const host = new Host(process.env.MIRN_HOST, process.env.MIRN_MODULE);
    await host.start();
    try {
      const tab = await Tab.signedIn(browser, host, "administer");
      await tab.page.goto(`${host.address}#/about`);
      await tab.page.getByText("Simulator and lessons").click();
      await tab.page.getByLabel("Lesson", { exact: true }).selectOption(lesson);
      await tab.page.getByRole("button", { name: "Begin" }).click();
      for (const [index, step] of steps.entries()) {
        if (step) await step(tab);
        await tab.page.waitForFunction(
          (least) => Number(document.querySelector("[data-lesson]")?.dataset.done) >= least,
          index + 1,
        );
      }
      await tab.seeText("That was the lesson.");
      await tab.requireAccessible();
      await tab.close();
    } finally {
      await host.end();
    }
  });
}

test("all lessons have been tried", async () => {
  const host = new Host(process.env.MIRN_HOST, process.env.MIRN_MODULE);
  await host.start();
  const tab = await Tab.signedIn(browser, host, "administer");
  await tab.page.getByText("Simulator and lessons").click();
  const told = await tab.page.locator("#lesson option").evaluateAll((all) => all.map((each) => each.value));
  assert.deepEqual(told.sort(), Object.keys(kLessons).sort());
  await tab.close();
  await host.end();
});
