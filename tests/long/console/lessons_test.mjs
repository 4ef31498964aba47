// Each lesson of the simulator's drawer by clicks, to its end.
//
//   MIRN_HOST=.../mirn-host MIRN_MODULE=.../mirn_plugin.so node --test tests/long/console/lessons_test.mjs
import assert from "node:assert/strict";
import { onOwnHosts } from "../../web/stage.mjs";

const story = onOwnHosts();

/** The next step is done by the drawer's own button. */
const act = (tab) => tab.press("Do it now");
const go = (tab) => tab.follow("Go there");
const verify = (tab) => tab.change("Verify volume: start", { fill: () => tab.choose("Repair", "true") });

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
      await tab.press("Take notice", card);
    },
  ],
  light: [
    async (tab) => {
      await go(tab);
      await tab.press("Light on");
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
      await tab.change("Verify volume: cancel");
    },
  ],
  rename: [
    async (tab) => {
      await go(tab);
      await tab.change("Rename volume", { fill: () => tab.fill("Name", "Renamed") });
    },
  ],
};

for (const [lesson, steps] of Object.entries(kLessons)) {
  story(`the lesson "${lesson}" comes to its end`, async ({ signedIn }) => {
    const tab = await signedIn("administer");
    await tab.visit("about");
    await tab.openDrawer();
    await tab.choose("Lesson", lesson);
    await tab.press("Begin");
    for (const [index, step] of steps.entries()) {
      if (step) await step(tab);
      await tab.page.waitForFunction(
        (least) => Number(document.querySelector("[data-lesson]")?.dataset.done) >= least,
        index + 1,
      );
    }
    await tab.seeText("That was the lesson.");
    await tab.requireAccessible();
  });
}

story("a lesson goes on after a reload of the page, until it is left", async ({ signedIn }) => {
  const tab = await signedIn("administer");
  await tab.openDrawer();
  await tab.choose("Lesson", "return");
  await tab.press("Begin");
  await act(tab);
  await tab.see("[data-lesson=return][data-done='1']");
  await tab.page.reload();
  await tab.see("[data-lesson=return][data-done='1']");
  await go(tab);
  await act(tab);
  await tab.see("[data-lesson=return][data-done='3']");
  await tab.page.reload();
  await tab.seeText("That was the lesson.");
  await tab.press("Another lesson");
  await tab.page.reload();
  await tab.see("[data-freshness=live]");
  await tab.openDrawer();
  await tab.see("#lesson");
});

story("all lessons have been tried", async ({ signedIn }) => {
  const tab = await signedIn("administer");
  await tab.openDrawer();
  const told = await tab.page.locator("#lesson option").evaluateAll((all) => all.map((each) => each.value));
  assert.deepEqual(told.sort(), Object.keys(kLessons).sort());
});
