// The one opening of all stories: a browser for a file, a host for the file or for each story, and tabs that are closed
// and judged at a story's end.
import { after, before, test } from "node:test";
import { startBrowser } from "./browser.mjs";
import { Console } from "./console.mjs";
import { Host } from "./host.mjs";

/** What a story has: a host, and people before it. */
class Stage {
  constructor(browser, host) {
    this.browser = browser;
    this.host = host;
    this.tabs = [];
  }

  /** Somebody's tab, with nothing in it yet. */
  open = async (options) => {
    const tab = await Console.open(this.browser, this.host, options);
    this.tabs.push(tab);
    return tab;
  };

  /** Somebody who has come by a printed address, and sees the first page. */
  signedIn = async (role, options) => {
    const tab = await this.open(options);
    await tab.page.goto(await this.host.signInAddress(role));
    await tab.see("[data-freshness=live]");
    return tab;
  };

  /** Somebody whose token outlives the host. */
  withToken = async (options) => {
    const tab = await this.open(options);
    await tab.page.goto(this.host.address);
    await tab.giveToken(this.host.token());
    await tab.see("[data-freshness=live]");
    return tab;
  };

  async close() {
    for (const tab of this.tabs) await tab.close();
  }

  /** What the tabs have to say of a story that went wrong. */
  async abandon() {
    for (const tab of this.tabs) await tab.abandon();
  }
}

async function play(stage, act) {
  try {
    await act(stage);
  } catch (failure) {
    await stage.abandon();
    throw failure;
  }
  await stage.close();
}

/** Stories on one host: each meets the machine as the one before has left it. */
export function onOneHost(options = {}) {
  let browser;
  let host;
  before(async () => {
    browser = await startBrowser();
    host = new Host(options);
    await host.start();
  });
  after(async () => {
    await browser?.close();
    await host?.end();
  });
  return (name, act) => test(name, () => play(new Stage(browser, host), act));
}

/** Stories with a host of their own each; `own`: of one story alone. */
export function onOwnHosts(options = {}) {
  let browser;
  before(async () => {
    browser = await startBrowser();
  });
  after(() => browser?.close());
  return (name, act, own = {}) =>
    test(name, async () => {
      const host = new Host({ ...options, ...own });
      try {
        await host.start();
        await play(new Stage(browser, host), act);
      } finally {
        await host.end();
      }
    });
}
