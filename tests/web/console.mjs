// What people do with the console, as verbs. Each waits for what it needs, and none for a time.
import assert from "node:assert/strict";
import { Tab } from "./browser.mjs";

export class Console extends Tab {
  static async open(browser, host, options) {
    const tab = new Console(...(await Tab.begin(browser, options)));
    tab.host = host;
    return tab;
  }

  /** A page by its address: "machine/disk/7". */
  async visit(place) {
    await this.page.goto(`${this.host.address}#/${place}`);
  }

  button(name, within = this.page) {
    return within.getByRole("button", { name });
  }

  async press(name, within = this.page) {
    await this.button(name, within).click();
  }

  async follow(name, within = this.page) {
    await within.getByRole("link", { name }).click();
  }

  async fill(label, text) {
    await this.field(label).fill(text);
  }

  async choose(label, value) {
    await this.field(label).selectOption(value);
  }

  /** By what its label begins with or holds. */
  async tick(label) {
    await this.page.getByLabel(label).check();
  }

  field(label) {
    return this.page.getByLabel(label, { exact: true });
  }

  cause(id) {
    return this.page.locator(`[data-cause="${id}"]`);
  }

  /** Causes that come or have come, by their ids. */
  async seeCauses(...ids) {
    for (const id of ids) await this.cause(id).waitFor();
  }

  async seeNoCauses(...ids) {
    for (const id of ids) await this.gone(this.cause(id));
  }

  async gone(locator) {
    await (typeof locator === "string" ? this.page.locator(locator) : locator).waitFor({ state: "detached" });
  }

  /** The first page tells that nothing is wrong, and that no work runs. */
  async seeCalm() {
    await this.see("[data-severity=ok]");
    await this.seeText("Nothing is wrong");
    await this.seeText("No work is running.");
  }

  async requireOff(button, words = null, within = this.page) {
    await this.button(button, within).waitFor();
    assert.ok(await this.button(button, within).isDisabled(), `${button} is in use`);
    if (words) await this.seeText(words);
  }

  /** From the form of a change to its plan. */
  async plan() {
    await this.press("Show the plan");
    await this.page.getByRole("button", { name: "Do it", exact: true }).waitFor();
  }

  /** Typed where something is lost. */
  async confirm(name) {
    await this.fill(`To go on, type the name: ${name}`, name);
  }

  async doIt() {
    await this.page.getByRole("button", { name: "Do it", exact: true }).click();
    await this.seeText("It is done.");
    await this.press("Close", this.page.locator("dialog"));
    await this.gone("dialog");
  }

  /** A change from its button to its end. `fill`: what is told in its form; `name`: what is lost by it is confirmed;
      `mayLose`: a name that is typed where the plan asks for it. */
  async change(button, { within, fill, name, mayLose } = {}) {
    await this.press(button, within);
    await this.see("dialog[data-change]");
    await fill?.(this);
    await this.plan();
    const isAsked = mayLose !== undefined && (await this.page.locator("#confirmation").isVisible());
    if (name || isAsked) await this.confirm(name ?? mayLose);
    await this.doIt();
  }

  async giveToken(token) {
    await this.fill("Or give a token:", token);
    await this.press("Sign in");
  }

  async openDrawer() {
    await this.page.getByText("Simulator and lessons").click();
  }

  /** Something that the simulator's drawer offers. */
  async befall(button, disk = null) {
    if (disk) await this.choose("A disk of the machine", disk);
    await this.press(button);
  }

  /** A window of this width shows all of the page's. */
  async requireNoOverflow(words) {
    assert.ok((await this.page.evaluate(() => document.documentElement.scrollWidth - innerWidth)) <= 0, words);
  }
}
