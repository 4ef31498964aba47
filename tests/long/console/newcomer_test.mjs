// A newcomer with the README: from `./run` to a rebuild that is seen to move, by what "A first session" names and nothing else.
// What `./run` builds is built before; it is not part of the two minutes.
import assert from "node:assert/strict";
import { execFileSync, spawn } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync } from "node:fs";
import net from "node:net";
import { tmpdir } from "node:os";
import path from "node:path";
import { test } from "node:test";
import { startBrowser } from "../../web/browser.mjs";
import { Console } from "../../web/console.mjs";

const kRoot = path.join(path.dirname(new URL(import.meta.url).pathname), "../../..");
const kMost = 120; // seconds

/** What the README puts into quotation marks, in its order, from the start to the first picture. */
function namedByReadme() {
  const readme = readFileSync(path.join(kRoot, "README.md"), "utf8");
  const session = readme.split("## A first session")[1].split("![")[0];
  return [...session.matchAll(/"([^"]+)"/g)].map(([, words]) => words);
}

const freePort = () =>
  new Promise((resolve) => {
    const server = net.createServer().listen(0, "127.0.0.1", () => {
      const { port } = server.address();
      server.close(() => resolve(port));
    });
  });

/** `./run` at a terminal, for somebody who has never run it. */
class FirstRun {
  async start() {
    this.home = mkdtempSync(path.join(tmpdir(), "mirn_newcomer_"));
    const { XDG_STATE_HOME, ...environment } = process.env;
    const command = `./run --port ${await freePort()}`;
    this.process = spawn("script", ["--quiet", "--return", "--flush", "--command", command, "/dev/null"], {
      cwd: kRoot,
      env: { ...environment, HOME: this.home },
      detached: true,
    });
    this.printed = "";
    this.ended = new Promise((resolve) => this.process.once("exit", resolve));
  }

  /** What stands behind these words, once they are printed. */
  behind(words) {
    const found = () => new RegExp(`${words}\\s*(\\S+)\\s`).exec(this.printed)?.[1];
    return new Promise((resolve, reject) => {
      this.process.stdout.on("data", (piece) => {
        this.printed += piece;
        if (found()) resolve(found());
      });
      this.process.once("exit", () => reject(new Error(`./run ended: ${this.printed}`)));
    });
  }

  async end() {
    process.kill(-this.process.pid, "SIGINT");
    await this.ended;
    rmSync(this.home, { recursive: true, force: true });
  }
}

/** Resolves when the work has come further than it is now. */
const moves = (progress) =>
  progress.evaluate(
    (bar) => new Promise((resolve) => new MutationObserver(resolve).observe(bar, { attributes: true, attributeFilter: ["value"] })),
  );

test(`a newcomer sees a rebuild move within ${kMost} s`, async (story) => {
  execFileSync("cmake", ["--preset", "run"], { cwd: kRoot });
  execFileSync("cmake", ["--build", "--preset", "run"], { cwd: kRoot });
  const [signIn, begin, plan, act, work] = namedByReadme();
  const browser = await startBrowser();
  story.after(() => browser.close());
  const began = performance.now();
  const run = new FirstRun();
  await run.start();
  story.after(() => run.end());

  const tab = await Console.open(browser, run);
  await tab.page.goto(await run.behind(signIn));
  const cause = tab.page.locator("[data-cause]", { hasText: "Volume Archive lacks redundancy" });
  await tab.press(begin, cause);
  const disks = tab.page.locator("dialog select");
  await disks.locator("option:enabled:not([value=''])").first().waitFor({ state: "attached" });
  await disks.selectOption(await disks.locator("option:enabled:not([value=''])").first().getAttribute("value"));
  await tab.press(plan);
  const [, name] = /type the name: (.+)/.exec(await tab.page.locator("label[for=confirmation]").innerText());
  await tab.page.locator("#confirmation").fill(name);
  await tab.press(act);
  await tab.press("Close", tab.page.locator("dialog"));
  const progress = tab.page.locator("section", { hasText: work }).locator("progress").first();
  await progress.waitFor();
  await moves(progress);
  const seconds = (performance.now() - began) / 1000;
  console.log(`from ./run to a rebuild that moves: ${seconds.toFixed(1)} s`);
  await tab.close();
  assert.ok(seconds < kMost);
});
