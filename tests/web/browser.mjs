// A browser, and tabs that note what must not happen on a page.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";
import path from "node:path";

const here = path.dirname(new URL(import.meta.url).pathname);
const require = createRequire(path.join(here, "../../web/package.json"));
const { chromium } = require("playwright-core");
const kAxe = readFileSync(require.resolve("axe-core/axe.min.js"), "utf8");
const kPatience = Number(process.env.MIRN_PATIENCE ?? 30_000); // milliseconds

export const startBrowser = () =>
  chromium.launch({ executablePath: process.env.MIRN_CHROMIUM ?? "/usr/bin/chromium", args: ["--no-sandbox"] });

/** A tab that notes what must not happen: lines on the console and requests that fail. */
export class Tab {
  /** What a tab is made with, in a browser's profile of its own. */
  static async begin(browser, options = {}) {
    const context = await browser.newContext({ locale: "en-GB", timezoneId: "UTC", ...options });
    const page = await context.newPage();
    page.setDefaultTimeout(kPatience);
    return [context, page];
  }

  constructor(context, page) {
    this.context = context;
    this.page = page;
    this.faults = [];
    this.expected = [];
    page.on("console", (line) => this.note(`console: ${line.text()}`));
    page.on("pageerror", (failure) => this.note(`error: ${failure.stack}`));
    page.on("requestfailed", (request) => {
      // What a page asked for when it was left.
      const words = request.failure()?.errorText;
      if (words !== "net::ERR_ABORTED") this.note(`failed: ${request.url()} ${words}`);
    });
    page.on("response", (answer) => {
      if (answer.status() >= 400) this.note(`${answer.status()}: ${answer.url()}`);
    });
  }

  note(text) {
    if (!this.expected.some((pattern) => pattern.test(text))) this.faults.push(text);
  }

  /** From now on such notes are what the story is about. */
  expect(...patterns) {
    this.expected.push(...patterns);
  }

  /** The host goes and comes back. */
  expectCut() {
    this.expect(/ERR_CONNECTION|ERR_INCOMPLETE|ERR_EMPTY/);
  }

  async close() {
    await this.context.close();
    assert.deepEqual(this.faults, [], "what must not happen on a page");
  }

  /** When its story went wrong anyway: what it showed, and what it noted. */
  async abandon() {
    const shown = await this.page.evaluate(() => document.body.innerText).catch(() => "");
    console.log(`${this.page.url()}\n${shown}\n${this.faults.join("\n")}`);
    await this.context.close();
  }

  see(selector) {
    return this.page.locator(selector).first().waitFor();
  }

  seeText(text) {
    return this.page.getByText(text).first().waitFor();
  }

  /** When nothing on the page waits for its first answer any more. */
  settled() {
    return this.page.waitForFunction(
      () => !/Looking …|Looking at the machine …|Suche läuft …|Die Maschine wird abgefragt …/.test(document.body.innerText),
    );
  }

  /** What people with other means than eyes and mouse could not use. */
  async requireAccessible() {
    await this.page.evaluate(kAxe);  // not as a script of the page, which its policy would refuse
    const found = await this.page.evaluate(async () => {
      // Halfway between two colours a text may be hard to read for a moment.
      for (let all; (all = document.getAnimations()).length > 0; ) await Promise.allSettled(all.map((each) => each.finished));
      return (await globalThis.axe.run(document)).violations;
    });
    const words = found.map((each) => `${each.id}: ${each.nodes.map((node) => node.html).join("\n  ")}`);
    assert.deepEqual(words, []);
  }
}
