// The running host on a simulated machine, and what befalls that from outside.
import assert from "node:assert/strict";
import { spawn } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import http from "node:http";
import { tmpdir } from "node:os";
import path from "node:path";

const kSettings = "[SYSTEM\\CurrentControlSet\\Services\\qnPalx\\Parameters\\Device]\nLedLocateTimeout=12\n";
const kFailed = 15; // as the library's header has it
const kWithoutEnd = 4294967295;

/** A host on a simulated machine, in a folder of its own. */
export class Host {
  /** `machine`: as a scenario tells it; without one the simulator's own. `clockSpeed` 0: its time passes by hand alone. */
  constructor({ machine = null, clockSpeed = 1, options = [] } = {}) {
    this.folder = mkdtempSync(path.join(tmpdir(), "mirn_console_"));
    writeFileSync(this.file("registry.ini"), kSettings);
    if (machine) writeFileSync(this.file("scenario.json"), JSON.stringify(machine));
    this.hasScenario = machine !== null;
    this.clockSpeed = clockSpeed;
    this.options = options;
  }

  file(name) {
    return path.join(this.folder, name);
  }

  /** Resolves when it serves; the port stays the same over a second start. */
  async start() {
    const environment = {
      ...process.env,
      MIRN_REGISTRY: this.file("registry.ini"),
      VEXL2_STATE: this.file("machine.json"),
      VEXL2_CLOCK_SPEED: String(this.clockSpeed),
      VEXL2_EVENT_WAIT_CAP: "50",
    };
    if (this.hasScenario) environment.VEXL2_SCENARIO = this.file("scenario.json");
    const { MIRN_HOST, MIRN_MODULE } = process.env;
    const options = ["--module", MIRN_MODULE, "--port", String(this.port ?? 0), "--simulator-controls"];
    options.push("--token-file", this.file("token"), ...this.options);
    this.process = spawn(MIRN_HOST, options, { env: environment, stdio: ["ignore", "pipe", "pipe"] });
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

  /** Without a chance to save what it knows. */
  async crash() {
    this.process?.kill("SIGKILL");
    await this.ended;
  }

  async end() {
    await this.crash();
    rmSync(this.folder, { recursive: true, force: true });
  }

  token() {
    return readFileSync(this.file("token"), "utf8").trim();
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
        { socketPath: this.file("host.sock"), method: "POST", path: "/api/v1/session/codes" },
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

  /** A volume, by its name. */
  async volume(name) {
    return (await this.ask("GET", "mirn/volumes")).find((each) => each.name === name);
  }

  /** Something befalls a disk, named by its id or serial number. */
  befall(incident, disk) {
    return this.ask("POST", `simulator/${incident}`, { disk });
  }

  /** The library fails the next calls of an operation: so many, or all. */
  failCalls(operation, count = kWithoutEnd) {
    return this.ask("POST", "simulator/fail-calls", { operation, status: kFailed, count });
  }

  /** It fails none any more. */
  clearFaults() {
    return this.ask("POST", "simulator/clear-faults", {});
  }

  /** Time of the machine, whose clock stands still. */
  async passTime(seconds) {
    await this.ask("POST", "simulator/advance-clock", { milliseconds: seconds * 1000 });
  }
}
