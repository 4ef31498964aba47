// How a fault comes to a page: what the page heard and asked meanwhile, noted in the page itself.

/** Notes each event of the stream before the page has it, and each look of the page at health, with what that told. */
function noteWhatComes() {
  const notes = { events: [], looks: [] };
  globalThis.notes = notes;
  const ask = globalThis.fetch;
  const hear = (chunk, controller) => {
    const names = [...new TextDecoder().decode(chunk).matchAll(/^event: (\w+)$/gm)].map((match) => match[1]);
    for (const name of names) if (name !== "heartbeat") notes.events.push({ name, at: performance.now() });
    controller.enqueue(chunk);
  };
  globalThis.fetch = async (address, wishes) => {
    const { pathname } = new URL(address, document.baseURI);
    const look = pathname.endsWith("/api/v1/health") ? { begun: performance.now(), causes: null } : null;
    if (look) notes.looks.push(look);
    const answer = await ask(address, wishes);
    if (look) look.causes = (await answer.clone().json()).causes.map(({ id }) => id);
    if (!pathname.endsWith("/events/stream")) return answer;
    notes.events.push({ name: "open", at: performance.now() }); // the page looks anew for that, too
    const body = answer.body.pipeThrough(new TransformStream({ transform: hear }));
    return new Response(body, { status: answer.status, headers: answer.headers });
  };
}

/** Lets the fault happen out of the page, and waits for its cause to be drawn. */
function meet({ token, control, disk, cause }) {
  const isThere = () => document.querySelector(`[data-cause="${cause}"]`) !== null;
  return new Promise((resolve) => {
    const told = { begun: performance.now() };
    const watch = new MutationObserver(() => {
      if (!isThere() || told.seen) return;
      told.seen = performance.now();
      if (told.answered) resolve(told);
    });
    watch.observe(document.body, { childList: true, subtree: true });
    const fields = { Authorization: `Bearer ${token}`, "Content-Type": "application/json" };
    void fetch(`api/v1/simulator/${control}`, { method: "POST", headers: fields, body: JSON.stringify({ disk }) }).then(() => {
      told.answered = performance.now();
      if (told.seen) resolve(told);
    });
  });
}

export class FirstSight {
  /** To be called before the tab's first page. */
  static async prepare(tab) {
    await tab.context.addInitScript(noteWhatComes);
    return new FirstSight(tab);
  }

  constructor(tab) {
    this.tab = tab;
  }

  /** The page has looked since it last heard of something, and knows what came. */
  async atRest() {
    await this.tab.page.waitForFunction(() => {
      const last = globalThis.notes.looks.at(-1);
      return last?.causes && last.begun > (globalThis.notes.events.at(-1)?.at ?? 0);
    });
  }

  /** Milliseconds to the page, from the moment the fault has happened and from when it was asked for, and what the page heard
      and asked meanwhile. */
  async of(control, disk) {
    const { host, page } = this.tab;
    const cause = `disk-failed-${disk.id}`;
    await this.atRest();
    const { begun, answered, seen } = await page.evaluate(meet, { token: host.token(), control, disk: disk.id, cause });
    const { events, looks } = await page.evaluate(() => globalThis.notes);
    // Its alarm is the last that comes of it.
    await this.tab.page.waitForFunction((count) => globalThis.notes.events.filter(({ name }) => name === "alarm").length > count,
      events.filter(({ name, at }) => name === "alarm" && at < begun).length);
    return {
      cause,
      milliseconds: seen - answered,
      sinceAsked: seen - begun,
      events: events.filter(({ at }) => at > begun && at < seen),
      looks: looks.filter((look) => look.begun > begun && look.begun < seen),
    };
  }
}
