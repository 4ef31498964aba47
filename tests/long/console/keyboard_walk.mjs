// Somebody who has keys only: from stop to stop of a page, forth and back.
import assert from "node:assert/strict";

/** What keys can come to, in the order of the page; radio buttons that belong together are one stop. Notes whether that is
 * something else than before. */
function findStops(scope) {
  const kinds = "a[href], button:enabled, input:enabled, select:enabled, textarea:enabled, summary, [tabindex='0']";
  const isFirst = (each) =>
    each.type !== "radio" || each === document.querySelector(`input[type=radio][name="${each.name}"]:enabled`);
  const isThere = (each) => each.checkVisibility({ checkVisibilityCSS: true }) && isFirst(each);
  const before = globalThis.stops ?? [];
  globalThis.stops = [...document.querySelector(scope).querySelectorAll(kinds)].filter(isThere);
  globalThis.areOthers = before.length !== globalThis.stops.length || before.some((each, place) => each !== globalThis.stops[place]);
  return globalThis.stops.map((each) => each.innerText?.trim() || each.id || each.outerHTML);
}

/** Where the keys are: the stop's place in the order, -1 for none, and what is wrong with how it is seen. */
function lookAtFocus() {
  const element = document.activeElement;
  const isOne = (stop) => stop === element || (element.type === "radio" && stop.name === element.name);
  const place = globalThis.stops.findIndex(isOne);
  if (element === document.body) return { place, name: "body", faults: [] };
  const style = getComputedStyle(element);
  const box = element.getClientRects()[0]; // a link may go over several lines
  const shown = document.elementFromPoint(box.x + box.width / 2, box.y + box.height / 2);
  const isOpen = element.contains(shown) || element.labels?.[0]?.contains(shown);
  const faults = [];
  // Day, month and the calendar are stops of their own in a field for a moment; those have the browser's own mark.
  const isPart = element.type === "datetime-local" && !element.matches(":focus-visible");
  const isMarked = element.matches(":focus-visible") && style.outlineStyle !== "none" && parseFloat(style.outlineWidth) >= 2;
  if (!isPart && !isMarked) faults.push(`it does not tell that the keys are there: ${style.outline}`);
  if (box.bottom > innerHeight + 1 || box.top < -1) faults.push(`it is out of the window: ${box.top} to ${box.bottom}`);
  if (!isOpen) faults.push(`it is covered by ${shown?.outerHTML.slice(0, 80)}`);
  return { place, name: element.outerHTML.slice(0, 120), faults };
}

const isParted = (tab) => tab.page.evaluate(() => document.activeElement.type === "datetime-local");

const look = (tab) => tab.page.evaluate(lookAtFocus);

/** Where the keys are after one of them; seen as it must be. */
async function step(tab, key, words) {
  const before = await look(tab);
  await tab.page.keyboard.press(key);
  const seen = await look(tab);
  if (seen.place === before.place && (await isParted(tab))) return step(tab, key, words);
  assert.deepEqual(seen.faults, [], `${words}: ${seen.name}`);
  return seen;
}

/** From the first stop of the page over all others out of it, and back: each is met once, in the order of the page. A page
 * to which answers came meanwhile is walked again. */
export async function walk(tab, words, turns = 5) {
  try {
    return await walkOnce(tab, words);
  } catch (failure) {
    await tab.page.evaluate(findStops, "body");
    if (turns > 1 && (await tab.page.evaluate(() => globalThis.areOthers))) return walk(tab, words, turns - 1);
    throw failure;
  }
}

async function walkOnce(tab, words) {
  const names = await tab.page.evaluate(findStops, "body");
  assert.ok(names.length > 0, words);
  await tab.page.evaluate(() => globalThis.stops[0].focus());
  for (const [key, order] of [["Tab", 1], ["Shift+Tab", -1]]) {
    const met = [order > 0 ? 0 : names.length - 1];
    if (order < 0) await tab.page.evaluate(() => globalThis.stops.at(-1).focus());
    while (met.length < names.length) {
      const { place, name } = await step(tab, key, words);
      assert.equal(place, met.at(-1) + order, `${words}: ${key} from "${names[met.at(-1)]}" comes to ${name}`);
      met.push(place);
    }
    await tab.page.keyboard.press(key);
    const { place } = await look(tab);
    assert.ok(place === -1 || place === (order > 0 ? 0 : names.length - 1), `${words}: the keys are caught at its end`);
  }
  return names.length;
}

/** The keys stay in an open dialog, and come to each of its stops. */
export async function walkDialog(tab, words) {
  const names = await tab.page.evaluate(findStops, "dialog[open]");
  const met = new Set();
  const isIn = () => tab.page.evaluate(() => document.activeElement.closest("dialog") !== null);
  assert.ok(await isIn(), `${words}: the keys are in the dialog`);
  for (let presses = 0; presses < 2 * names.length + 2; presses += 1) {
    const { place, name } = await step(tab, "Tab", words);
    assert.ok(place >= 0 || name === "body" || (await isIn()), `${words}: the keys are behind the dialog, at ${name}`);
    if (place >= 0) met.add(place);
  }
  assert.deepEqual(names.filter((_, place) => !met.has(place)), [], `${words}: what keys do not come to`);
}

/** On by Tab until what is wanted has the keys; `limit` stops at most. */
export async function tabTo(tab, wanted, limit = 200) {
  const isThere = () => wanted.evaluate((element) => element === document.activeElement);
  for (let presses = 0; presses < limit; presses += 1) {
    if (await isThere()) return;
    await tab.page.keyboard.press("Tab");
  }
  assert.ok(await isThere(), `${limit} stops on, the keys have not come to ${wanted}`);
}
