// A browser before a running host: verbs for stories, and what must never happen on a page.
import assert from "node:assert/strict";
import { spawn } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import http from "node:http";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import path from "node:path";

const here = path.dirname(new URL(import.meta.url).pathname);
const require = createRequire(path.join(here, "../../web/package.json"));
const { chromium } = require("playwright-core");
const kAxe = readFileSync(require.resolve("axe-core/axe.min.js"), "utf8");
const kPatience = 30_000;
const kSettings = "[SYSTEM\\CurrentControlSet\\Services\\qnPalx\\Parameters\\Device]\nLedLocateTimeout=12\n";

/** A host on a simulated machine, in a folder of its own. */
export class Host {
  constructor(program, module) {
    this.program = program;
    this.module = module;
    this.folder = mkdtempSync(path.join(tmpdir(), "mirn_console_"));
    writeFileSync(path.join(this.folder, "registry.ini"), kSettings);
  }

  /** Resolves when it serves; the port stays the same over a second start. */
  async start(scenario = null) {
    const environment = {
      ...process.env,
      MIRN_REGISTRY: path.join(this.folder, "registry.ini"),
      VEXL2_STATE: path.join(this.folder, "machine.json"),
      VEXL2_EVENT_WAIT_CAP: "50",
    };
    if (scenario) environment.VEXL2_SCENARIO = scenario;
    const options = ["--module", this.module, "--port", String(this.port ?? 0), "--simulator-controls"];
    options.push("--token-file", path.join(this.folder, "token"));
    this.process = spawn(this.program, options, { env: environment, stdio: ["ignore", "pipe", "pipe"] });
    this.ended = new Promise((resolve) => this.process.once("exit", resolve));
    let told = "";
    this.process.stderr.on("data", () => undefined);
    await new Promise((resolve, reject) => {
      this.process.stdout.on("data", (piece) => {
        told += piece;
        if (/^Unix socket|^Token file/m.test(told)) resolve();
      });
      this.process.once("exit", () => reject(new Error(`the host does not serve: ${told}`)));
    });
    this.port = Number(/http:\/\/127\.0\.0\.1:(\d+)/.exec(told)[1]);
    this.address = `http://127.0.0.1:${this.port}/`;
  }

  async stop() {
    this.process.kill("SIGTERM");
    await this.ended;
  }

  async end() {
    this.process.kill("SIGKILL");
    await this.ended;
    rmSync(this.folder, { recursive: true, force: true });
  }

  token() {
    return readFileSync(path.join(this.folder, "token"), "utf8").trim();
  }

  /** The value of a good answer. */
  async ask(method, target, body) {
    const answer = await fetch(`${this.address}api/v1/${target}`, {
      method,
      headers: { Authorization: `Bearer ${this.token()}`, "Content-Type": "application/json" },
      body: body === undefined ? undefined : JSON.stringify(body),
    });
    assert.ok(answer.ok, `${method} ${target}: ${answer.status}`);
    return answer.status === 204 ? null : await answer.json();
  }

  /** The address that signs a browser in, as a user of the machine gets it. */
  signInAddress(role = "administer") {
    return new Promise((resolve, reject) => {
      const request = http.request(
        { socketPath: path.join(this.folder, "host.sock"), method: "POST", path: "/api/v1/session/codes" },
        (answer) => {
          let text = "";
          answer.on("data", (piece) => (text += piece));
          answer.on("end", () => resolve(JSON.parse(text).url));
        },
      );
      request.once("error", reject);
      request.setHeader("Host", "localhost");
      request.setHeader("Content-Type", "application/json");
      request.end(JSON.stringify({ role }));
    });
  }

  /** A disk, by its serial number. */
  async disk(serial) {
    return (await this.ask("GET", "mirn/enddevices")).find((each) => each.serialNumber === serial);
  }
}

export const startBrowser = () =>
  chromium.launch({ executablePath: process.env.MIRN_CHROMIUM ?? "/usr/bin/chromium", args: ["--no-sandbox"] });

/** A tab that notes what must not happen: lines on the console and requests that fail. */
export class Tab {
  static async open(browser, options = {}) {
    const context = await browser.newContext({ locale: "en-GB", timezoneId: "UTC", ...options });
    const page = await context.newPage();
    page.setDefaultTimeout(kPatience);
    return new Tab(context, page);
  }

  /** Before the host's first page, signed in as its user in a role. */
  static async signedIn(browser, host, role, options = {}) {
    const tab = await Tab.open(browser, options);
    await tab.page.goto(await host.signInAddress(role));
    await tab.see("[data-freshness=live]");
    return tab;
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

  async close() {
    await this.context.close();
    assert.deepEqual(this.faults, [], "what must not happen on a page");
  }

  see(selector) {
    return this.page.locator(selector).first().waitFor();
  }

  seeText(text) {
    return this.page.getByText(text).first().waitFor();
  }

  /** When nothing on the page waits for its first answer any more. */
  settled() {
    return this.page.waitForFunction(() => !/Looking …|Looking at the machine …/.test(document.body.innerText));
  }

  /** What people with other means than eyes and mouse could not use. */
  async requireAccessible() {
    await this.page.evaluate(kAxe);  // not as a script of the page, which its policy would refuse
    const found = await this.page.evaluate(async () => (await globalThis.axe.run(document)).violations);
    const words = found.map((each) => `${each.id}: ${each.nodes.map((node) => node.html).join("\n  ")}`);
    assert.deepEqual(words, []);
  }
}
