// Parts of the console that need no browser, bundled as the console is.
import assert from "node:assert/strict";
import { mkdtempSync, readFileSync, rmSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import path from "node:path";
import { after, test } from "node:test";

const here = path.dirname(new URL(import.meta.url).pathname);
const web = path.join(here, "../../web");
const { buildSync } = createRequire(path.join(web, "package.json"))("esbuild");
const folder = mkdtempSync(path.join(tmpdir(), "mirn_web_"));
after(() => rmSync(folder, { recursive: true }));

async function load(name) {
  const outfile = path.join(folder, `${path.basename(name, ".ts")}.mjs`);
  buildSync({ entryPoints: [path.join(web, "src", name)], bundle: true, format: "esm", outfile });
  return import(outfile);
}

const units = await load("format/units.ts");
const { askAgain } = await load("api/client.ts");
const { EventReader } = await load("api/stream.ts");
const { entryText } = await load("format/entry_text.ts");

for (const [bytes, told] of [
  ["0", "0 B"],
  ["999", "999 B"],
  ["1000", "1 kB"],
  ["999499999", "999 MB"],
  ["999500000", "1 GB"],
  ["4398046511104", "4.4 TB"],
  ["480103981056", "480 GB"],
  ["18446744073709551615", "18,447 PB"],
  ["", "unknown"],
  [undefined, "unknown"],
]) {
  test(`${bytes} bytes are ${told}`, () => assert.equal(units.size(bytes), told));
}

for (const [seconds, told] of [
  [0, "0 s"],
  [59, "59 s"],
  [60, "1 min"],
  [3599, "59 min"],
  [3600, "1 h"],
  [7500, "2 h 5 min"],
  [90061, "1 d 1 h"],
  [86460, "1 d 1 min"],
]) {
  test(`${seconds} seconds are ${told}`, () => assert.equal(units.duration(seconds), told));
}

test("a moment of another day has its date", () => {
  const now = Date.parse("2026-03-02T12:00:00Z");
  assert.match(units.moment("2026-03-02T11:59:58Z", now), /^\d\d:\d\d:58$/);
  assert.match(units.moment("2025-03-02T11:59:58Z", now), /2025, \d\d:\d\d:58$/);
  assert.equal(units.moment("unknown", now), "unknown");
});

for (const [text, told] of [
  ["2026-03", "March 2026"],
  ["2025-12", "December 2025"],
  ["soon", "soon"],
]) {
  test(`the month ${text} is ${told}`, () => assert.equal(units.month(text), told));
}

const kStream =
  ': a comment\nretry: 1000\nevent: event\nid: ab.1\ndata: {"row":1}\n\n' +
  'event: revision\ndata: {"a":\ndata: 2}\n\nevent: heartbeat\r\ndata: {}\r\n\r\nevent: cut\ndata: {"never"';

test("events are read from pieces of any size", () => {
  for (let size = 1; size < kStream.length; size += 1) {
    const reader = new EventReader();
    const events = [];
    for (let at = 0; at < kStream.length; at += size) events.push(...reader.take(kStream.slice(at, at + size)));
    assert.deepEqual(events, [
      { name: "event", id: "ab.1", data: { row: 1 } },
      { name: "revision", id: null, data: { a: 2 } },
      { name: "heartbeat", id: null, data: {} },
    ]);
  }
});

const kEntry = { row: 1, at: "", severity: "info", actor: null, object: null, operation: null, outcome: null, details: {} };
for (const [entry, told] of [
  [{ kind: "alarm", operation: "disk-failed", outcome: "raised", details: { text: "A disk has failed." } }, "A disk has failed."],
  [{ kind: "alarm", outcome: "cleared", details: { text: "A disk has failed." } }, "Over: A disk has failed."],
  [{ kind: "event", operation: "DISK_REMOVED", details: { description: "It was removed" } }, "It was removed"],
  [{ kind: "job", operation: "rebuild", outcome: "begun", object: { name: "System" } }, "Rebuild of System: begun"],
  [{ kind: "audit", operation: "rebuildVolume", outcome: "done", actor: "first" }, "first: Rebuild volume: done"],
]) {
  test(`an entry reads: ${told}`, () => assert.equal(entryText({ ...kEntry, ...entry }), told));
}

const { relatedTo } = await load("live/relations.ts");
const { allBays, portOfDisk } = await load("live/bays.ts");
const { factsOf } = await load("format/facts.ts");
const kMachine = {
  controllers: [{ id: "c" }, { id: "e" }],
  arrays: [
    { id: "a", controllerIds: ["c"] },
    { id: "b", controllerIds: ["e"] },
  ],
  disks: [
    { id: "1", controllerId: "c", arrayId: "a", address: "0-1" },
    { id: "2", controllerId: "c", arrayId: "a", address: "0-2" },
    { id: "3", controllerId: "c", arrayId: null, address: "0-3" },
    { id: "4", controllerId: "e", arrayId: "b", address: "1-1" },
  ],
  volumes: [
    { id: "v", arrayId: "a", journalingDriveId: "3" },
    { id: "w", arrayId: "a" },
    { id: "x", arrayId: "b" },
  ],
  ports: [
    { id: "p", localDeviceType: "CONTROLLER", localDeviceId: "c", connectedPortId: "q", address: "0-1" },
    { id: "q", localDeviceType: "END_DEVICE", localDeviceId: "1", connectedPortId: "p", address: "0-1" },
    { id: "r", localDeviceType: "CONTROLLER", localDeviceId: "c", connectedPortId: "", address: "0-9" },
  ],
};

const { shared } = await load("live/sharing.ts");
const kTwoDisks = () => ({ disks: [{ id: "1", state: "NORMAL", ports: ["p"] }, { id: "2", state: "NORMAL", ports: [] }], arrays: [] });

/** The service's next answer, and what it was asked with. */
function answering(status, tag, body) {
  const asked = {};
  globalThis.document = { baseURI: "http://host/" };
  globalThis.sessionStorage = { getItem: () => null };
  globalThis.fetch = async (address, { headers }) => {
    Object.assign(asked, { address: String(address), headers });
    return new Response(body, { status, headers: tag ? { ETag: tag } : {} });
  };
  return asked;
}

test("a list is asked for with the tag that it had, and is not sent again where it is the same", async () => {
  const { signal } = new AbortController();
  let asked = answering(200, '"a"', "[1]");
  const first = await askAgain("mirn/arrays", null, signal);
  assert.deepEqual(first, { tag: '"a"', body: [1] });
  assert.deepEqual(asked, { address: "http://host/api/v1/mirn/arrays", headers: {} });

  asked = answering(304, '"a"', null);
  assert.equal(await askAgain("mirn/arrays", first, signal), first);
  assert.deepEqual(asked.headers, { "If-None-Match": '"a"' });

  answering(200, '"b"', "[2]");
  assert.deepEqual(await askAgain("mirn/arrays", first, signal), { tag: '"b"', body: [2] });

  asked = answering(200, null, "[3]");
  await askAgain("mirn/arrays", { tag: null, body: [2] }, signal);
  assert.deepEqual(asked.headers, {});

  answering(503, null, '{"detail": "Later."}');
  await assert.rejects(askAgain("mirn/arrays", first, signal), { status: 503, message: "Later." });
});

test("what is fetched again and equal is what was there", () => {
  const before = kTwoDisks();
  assert.equal(shared(before, kTwoDisks()), before);
});

test("of what has changed the rest is what was there", () => {
  const before = kTwoDisks();
  const fetched = kTwoDisks();
  fetched.disks[1].state = "FAILED";
  const now = shared(before, structuredClone(fetched));
  assert.deepEqual(now, fetched);
  assert.notEqual(now, before);
  assert.equal(now.arrays, before.arrays);
  assert.equal(now.disks[0], before.disks[0]);
  assert.notEqual(now.disks[1], before.disks[1]);
  assert.equal(now.disks[1].ports, before.disks[1].ports);
});

test("objects of a list are known by their id where one has gone or come", () => {
  const before = kTwoDisks();
  const [first, second] = before.disks;
  const fewer = shared(before.disks, kTwoDisks().disks.slice(1));
  assert.deepEqual(fewer, [second]);
  assert.equal(fewer[0], second);
  const more = shared(before.disks, [{ id: "0" }, ...kTwoDisks().disks]);
  assert.equal(more[1], first);
  assert.equal(more[2], second);
});

for (const [before, now] of [
  [null, { a: 1 }],
  [{ a: 1 }, null],
  [{ a: 1 }, { b: 1 }],
  [{ a: undefined }, { b: undefined }],
  [{ a: 1, b: 2 }, { a: 1 }],
  [[1], { 0: 1 }],
  [{ 0: 1 }, [1]],
  [[1, 2], [2, 1]],
  [[1], [1, 2]],
  [[], null],
  ["a", "b"],
]) {
  test(`${JSON.stringify(now)} in place of ${JSON.stringify(before)} is told as it is`, () => {
    assert.deepEqual(shared(before, structuredClone(now)), now);
  });
}

for (const [type, id, told] of [
  ["array", "a", "array/a controller/c disk/1 disk/2 volume/v volume/w"],
  ["disk", "1", "array/a controller/c disk/1 volume/v volume/w"],
  ["disk", "3", "controller/c disk/3"],
  ["volume", "v", "array/a controller/c disk/1 disk/2 disk/3 volume/v"],
  ["volume", "w", "array/a controller/c disk/1 disk/2 volume/w"],
  ["controller", "e", "array/b controller/e disk/4 volume/x"],
]) {
  test(`to ${type} ${id} belong ${told}`, () => {
    assert.equal([...relatedTo(kMachine, type, id)].sort().join(" "), told);
  });
}

for (const [name, severity, calls] of [
  ["revision", "ok", true],
  ["alarm", "unknown", true],
  ["gap", "ok", true],
  ["heartbeat", "ok", false],
  ["heartbeat", "critical", false],
  ["heartbeat", "unknown", true],
  ["bye", "unknown", false],
]) {
  test(`${name} ${calls ? "calls" : "does not call"} for a look at a machine that is ${severity}`, async () => {
    const { callsForALook } = await load("live/picture.ts");
    assert.equal(callsForALook({ name, id: null, data: {} }, { severity }), calls);
  });
}

test("bays are the ports of a controller, and behind them disks that hang on none", () => {
  const told = allBays(kMachine)[0].map((bay) => [bay.address, bay.port?.id ?? null, bay.disk?.id ?? null]);
  assert.deepEqual(told, [["0-1", "p", "1"], ["0-9", "r", null], ["0-2", null, "2"], ["0-3", null, "3"]]);
  assert.equal(portOfDisk(kMachine, "1").id, "p");
  assert.equal(portOfDisk(kMachine, "2"), null);
});

test("facts are named and written for people", () => {
  const form = { totalSize: "480103981056", arrayId: null, systemDisk: true, sectorSize: { logical: "512" }, controllerIds: ["c"] };
  assert.deepEqual(factsOf(form).map((fact) => `${fact.label}: ${fact.text}`), [
    "Total size: 480 GB", "Array: none", "System disk: yes", "Sector size logical: 512 bytes", "Controller: c",
  ]);
});

const { asking, bodyOf, isWhole } = await load("live/change.ts");
const { operationsIn } = await load("api/document.ts");
const kDocument = {
  paths: {
    "/api/v1/mirn/volumes/{volumeId}/level": {
      put: {
        operationId: "changeVolumeLevel",
        summary: "Changes it.",
        requestBody: {
          content: {
            "application/json": {
              schema: {
                properties: {
                  raidLevel: { type: "string", enum: ["RAID_0"], description: "How.", "x-mirn": { candidates: { from: "level" } } },
                  disks: { type: "array" },
                  quick: { type: "boolean" },
                },
                required: ["raidLevel"],
              },
            },
          },
        },
      },
    },
  },
};

test("an operation is read from the document, with what it asks", () => {
  const operation = operationsIn(kDocument).get("changeVolumeLevel");
  assert.equal(operation.method, "PUT");
  assert.equal(operation.path, "mirn/volumes/{volumeId}/level");
  assert.deepEqual(operation.places, ["volumeId"]);
  assert.deepEqual(operation.fields.map((field) => [field.name, field.kind, field.isNeeded, field.hasCandidates]), [
    ["raidLevel", "text", true, true],
    ["disks", "list", false, false],
    ["quick", "boolean", false, false],
  ]);
  assert.equal(isWhole(operation, { disks: ["1"] }), false);
  assert.equal(isWhole(operation, { raidLevel: "" }), false);
  assert.equal(isWhole(operation, { raidLevel: "RAID_0" }), true);
  assert.deepEqual(bodyOf(operation, { raidLevel: "RAID_0", disks: [], quick: false }), { raidLevel: "RAID_0", quick: false });
  assert.equal(bodyOf({ ...operation, fields: [] }, {}), undefined);

  const asked = asking(operation, ["disks"]);
  assert.equal(isWhole(asked, { raidLevel: "RAID_0" }), false);
  assert.equal(isWhole(asked, { raidLevel: "RAID_0", disks: ["1"] }), true);
});

const { placeOf, kPages } = await load("live/place.ts");
for (const [fragment, page, object] of [
  ["", "overview", null],
  ["#/", "overview", null],
  ["#/nowhere/disk/1", "overview", null],
  ["#/overview/disk/1", "overview", null],
  ["#/machine", "machine", null],
  ["#/machine/disk", "machine", null],
  ["#/machine/disk/1", "machine", { type: "disk", id: "1" }],
  ["#/history/volume/2", "history", { type: "volume", id: "2" }],
]) {
  test(`${fragment || "no fragment"} is the page ${page}`, () => {
    const place = placeOf(fragment);
    assert.deepEqual([place.page, place.object], [page, object]);
  });
}
test("each page has an address of its own", () => {
  for (const page of kPages) assert.equal(placeOf(`#/${page}`).page, page);
});

const { filterFields, narrowed, roleOfWord } = await load("live/history_filter.ts");
const told = JSON.parse(readFileSync(path.join(web, "../docs/openapi.json"), "utf8"));
const known = operationsIn(told);
const historyFields = filterFields(known.get("listHistory").query);

test("the history's form is made of what its operation takes, but for its pages", () => {
  assert.deepEqual(
    historyFields.map(({ name, kind }) => `${name}: ${kind}`),
    [
      "from: moment",
      "to: moment",
      "kind: text",
      "severity: text",
      "objectType: text",
      "objectId: text",
      "actor: text",
      "text: text",
    ],
  );
});

for (const [filter, query] of [
  [{}, "history"],
  [{ kind: "", text: "  " }, "history"],
  [{ kind: "alarm", text: "a&b" }, "history?kind=alarm&text=a%26b"],
  [{ from: "never" }, "history"],
  [{ from: "2026-03-02T12:00:00Z" }, "history?from=2026-03-02T12%3A00%3A00.000Z"],
  [{ limit: "7", unknown: "x" }, "history"],
]) {
  test(`${JSON.stringify(filter)} asks for ${query}`, () =>
    assert.equal(narrowed("history", filter, historyFields), query));
}

test("a word that takes a greater role is known by its description", () => {
  const kind = historyFields.find(({ name }) => name === "kind");
  assert.equal(roleOfWord(kind, "audit"), "administer");
  assert.deepEqual(kind.words.filter((word) => word !== "audit").map((word) => roleOfWord(kind, word)), [null, null, null, null]);
});

const { reaches } = await load("live/rights.ts");
test("each operation tells who may ask for it", () => {
  assert.equal(known.get("acknowledgeAlarm").role, "operate");
  assert.deepEqual(
    ["observe", "operate", "administer"].map((own) => reaches(own, "operate")),
    [false, true, true],
  );
  assert.ok([...known.values()].every(({ role }) => reaches("administer", role)));
});
const { isStopOf } = await load("live/job_stops.ts");
test("what stops work is the operation that begins it, by another word", () => {
  const verify = known.get("verifyVolume");
  const action = (word) => ({ operation: "verifyVolume", argument: "action", word });
  assert.equal(isStopOf("verify", action("CANCEL"), verify), true);
  assert.equal(isStopOf("verify", action("START"), verify), false);
  assert.equal(isStopOf("rebuild", action("CANCEL"), verify), false);
  assert.equal(isStopOf("rebuild", { operation: "rebuildVolume", argument: null, word: null }, known.get("rebuildVolume")), false);
});

const { candidatesPath, judged } = await load("live/candidates.ts");
const { mebibytesOf, entryOf } = await load("format/size_entry.ts");
const { comingOf, isNothing } = await load("live/coming.ts");
const { lackedBy, reach, propertiesOf, draftFor } = await load("live/draft.ts");
const { wantedBy } = await load("live/steps.ts");

const kFields = {
  raidLevel: { "x-mirn": { candidates: {} } },
  source: { enum: ["DISK", "ARRAY"] },
  name: {},
  size: { "x-mirn": { unit: "MiB", candidates: {} } },
  disks: { type: "array", "x-mirn": { candidates: {}, when: { field: "source", word: "DISK" } } },
  arrayId: { "x-mirn": { candidates: {}, when: { field: "source", word: "ARRAY" } } },
};
const kNeeded = ["raidLevel", "source", "name", "size"];
const kThen = [{ then: { required: ["disks"] } }, { then: { required: ["arrayId"] } }];
const operationOf = (operationId, path, properties, required = [], allOf = []) =>
  operationsIn({
    paths: {
      [`/api/v1/mirn/${path}`]: {
        put: {
          operationId,
          summary: "",
          requestBody: { content: { "application/json": { schema: { properties, required, allOf } } } },
        },
      },
    },
  }).get(operationId);
const kCreate = operationOf("createVolume", "volumes", kFields, kNeeded, kThen);
const kOfService = { operation: "createVolume", type: "service", id: "service", name: "", given: {} };
const ofCreate = (name) => kCreate.fields.find((field) => field.name === name);

test("an argument counts with the word that it stands under alone", () => {
  const values = { raidLevel: "RAID_5", source: "ARRAY", name: "New", size: "0", disks: ["1"] };
  assert.equal(isWhole(kCreate, values), false);
  assert.deepEqual(bodyOf(kCreate, { ...values, arrayId: "7" }), {
    raidLevel: "RAID_5", source: "ARRAY", name: "New", size: "0", arrayId: "7",
  });
  assert.equal(isWhole(kCreate, { ...values, arrayId: "7" }), true);
});

test("values are asked for with all that has been told", () => {
  const values = { raidLevel: "RAID_5", source: "ARRAY", name: "A b", size: "", arrayId: "7", disks: ["1", "2"] };
  assert.equal(
    candidatesPath(kCreate, ofCreate("size"), kOfService, values),
    "actions/service/service/createVolume/size?limit=1000&raidLevel=RAID_5&source=ARRAY&name=A+b&arrayId=7",
  );
  assert.equal(
    candidatesPath(kCreate, ofCreate("disks"), kOfService, values),
    "actions/service/service/createVolume/disks?limit=1000&raidLevel=RAID_5&source=DISK&name=A+b",
  );
});

test("a refusal counts when nothing but the argument itself is missing", () => {
  const refused = [{ value: "1", object: null, allowed: false, errorId: "BAD", words: "No." }];
  const values = { raidLevel: "RAID_5", name: "New", size: "0" };
  assert.deepEqual(judged(refused, kCreate, ofCreate("disks"), values), refused);
  const early = judged(refused, kCreate, ofCreate("disks"), { name: "New", size: "0" });
  assert.deepEqual(early, [{ value: "1", object: null, allowed: true, errorId: null, words: null }]);
});

for (const [amount, unit, told] of [
  ["300", "GB", "286102"],
  ["1", "MiB", "1"],
  ["1.5", "GiB", "1536"],
  ["1,5", "GiB", "1536"],
  ["2", "TiB", "2097152"],
  ["0.9", "MiB", ""],
  ["0", "GB", ""],
  ["-1", "GB", ""],
  ["much", "GB", ""],
  ["", "GB", ""],
  ["1e30", "TB", ""],
]) {
  test(`${amount} ${unit} are ${told || "no size"} in mebibytes`, () => assert.equal(mebibytesOf(amount, unit), told));
}

test("a size that was told is found again", () => {
  assert.deepEqual(entryOf("1536"), { amount: "1536", unit: "MiB" });
  assert.deepEqual(entryOf("2048"), { amount: "2", unit: "GiB" });
  assert.deepEqual(entryOf("2097152"), { amount: "2", unit: "TiB" });
  assert.deepEqual(entryOf("0"), { amount: "", unit: "GB" });
});

const kArrays = {
  ...kMachine,
  arrays: [{ id: "a", name: "First", totalSize: "100", freeSize: "60" }],
  volumes: [{ id: "v", name: "Old", arrayId: "a", raidLevel: "RAID_0", totalSize: "40" }],
};
const comes = (type, rest) => ({ fate: "comes", text: "", objects: [{ type, id: null, ...rest }] });
const kMembers = [{ type: "disk", id: "1", name: "One" }];

const meets = (fate, type, rest) => ({ fate, text: `It ${fate}.`, objects: [{ type, ...rest }] });
const kOld = { name: "Old", level: "RAID_0", bytes: 40, isAbout: false, isOther: false };
const kOne = { id: "1", name: "One", isNew: false };

for (const [what, effects, told] of [
  [
    "a volume that comes into an array stands beside those that are there",
    [
      comes("volume", { name: "New", level: "RAID_5", members: kMembers, aboutTotalBytes: "20" }),
      meets("changes", "array", { id: "a", name: "First" }),
    ],
    {
      arrays: [
        {
          name: "First",
          bytes: 100,
          parts: [kOld, { name: "New", level: "RAID_5", bytes: 20, isAbout: true, isOther: true }],
          rest: 40,
          changes: [],
          members: [kOne],
        },
      ],
      disks: [],
    },
  ],
  [
    "a new array has what comes in it alone, and its disks no line of their own",
    [
      comes("volume", { name: "New", level: "RAID_1", aboutTotalBytes: "50" }),
      comes("array", { members: kMembers, aboutTotalBytes: "90" }),
      meets("changes", "disk", { id: "1", name: "One" }),
    ],
    {
      arrays: [
        {
          name: null,
          bytes: 90,
          parts: [{ name: "New", level: "RAID_1", bytes: 50, isAbout: true, isOther: true }],
          rest: 40,
          changes: [],
          members: [kOne],
        },
      ],
      disks: [],
    },
  ],
  [
    "an array that grows has its new members, and its volumes as they are",
    [
      meets("changes", "array", { id: "a", name: "First" }),
      meets("changes", "array", { id: "a", name: "First", aboutTotalBytes: "150", members: [kMembers[0], { id: "3", name: "Three" }] }),
    ],
    {
      arrays: [
        { name: "First", bytes: 150, parts: [kOld], rest: 110, changes: [], members: [kOne, { id: "3", name: "Three", isNew: true }] },
      ],
      disks: [],
    },
  ],
  [
    "a volume of another level and size is drawn as it will be, on disks that join",
    [
      meets("changes", "volume", { id: "v", name: "Old", level: "RAID_5", aboutTotalBytes: "60", members: [{ id: "3", name: "Three" }] }),
    ],
    {
      arrays: [
        {
          name: "First",
          bytes: 100,
          parts: [{ name: "Old", level: "RAID_5", bytes: 60, isAbout: true, isOther: true }],
          rest: 40,
          changes: ["It changes."],
          members: [{ id: "3", name: "Three", isNew: true }],
        },
      ],
      disks: [],
    },
  ],
  [
    "a volume that changes in other ways keeps level and size, and the disk that serves it has a line",
    [meets("changes", "volume", { id: "v", name: "Old" }), meets("overwritten", "disk", { id: "3", name: "Three" })],
    {
      arrays: [{ name: "First", bytes: 100, parts: [{ ...kOld, isOther: true }], rest: 60, changes: ["It changes."], members: [] }],
      disks: [{ id: "3", name: "Three", text: "It overwritten." }],
    },
  ],
  [
    "a volume that goes leaves its place free",
    [meets("goes", "volume", { id: "v", name: "Old" }), meets("changes", "array", { id: "a", name: "First" })],
    { arrays: [{ name: "First", bytes: 100, parts: [], rest: 100, changes: [], members: [] }], disks: [] },
  ],
  ["an array that goes is not drawn", [meets("goes", "volume", { id: "v" }), meets("goes", "array", { id: "a" })], { arrays: [], disks: [] }],
  [
    "a disk that becomes a spare has one line of all that befalls it",
    [meets("changes", "disk", { id: "3", name: "Three" }), meets("overwritten", "disk", { id: "3", name: "Three" })],
    { arrays: [], disks: [{ id: "3", name: "Three", text: "It changes. It overwritten." }] },
  ],
  ["what meets nothing comes to nothing", [], { arrays: [], disks: [] }],
  ["a plan without effects comes to nothing", undefined, { arrays: [], disks: [] }],
]) {
  test(what, () => {
    const coming = comingOf(kArrays, { effects });
    assert.deepEqual(coming, told);
    assert.equal(isNothing(coming), told.arrays.length + told.disks.length === 0);
  });
}

test("a draft goes as far as it is told, step by step", () => {
  const begin = draftFor({ ...kMachine, volumes: [{ name: "Volume_1" }] });
  assert.deepEqual(begin, { name: "Volume_2", size: "0" });
  assert.equal(reach(kCreate, begin), 1);
  assert.equal(reach(kCreate, { ...begin, raidLevel: "RAID_1" }), 2);
  const lacked = lackedBy(kCreate, { ...begin, raidLevel: "RAID_1", source: "DISK" }, 2);
  assert.deepEqual(lacked.map((field) => field.name), ["disks"]);
  const whole = { ...begin, raidLevel: "RAID_1", source: "DISK", disks: ["1"] };
  assert.equal(reach(kCreate, { ...whole, name: "" }), 3);
  assert.equal(reach(kCreate, whole), 4);
  assert.deepEqual(propertiesOf(kCreate, whole).map((field) => field.name), ["name", "size"]);
});

test("a step that health names is the change of its object, of the service, or of one that is still to be chosen", () => {
  const verify = operationOf("verifyVolume", "volumes/{volumeId}/verify", { action: {}, repair: { type: "boolean" } });
  const volume = { type: "volume", id: "v", name: "System" };
  const told = wantedBy({ operation: verify.id, arguments: { volumeId: "v", action: "START", repair: "true" } }, verify, [volume]);
  assert.deepEqual(told, { operation: verify.id, ...volume, given: { action: "START", repair: true } });
  const rescan = operationOf("rescan", "rescan", {});
  assert.equal(wantedBy({ operation: "rescan", arguments: {} }, rescan, [volume]).type, "service");
  const spare = operationOf("setDiskSpare", "disks/{diskId}/spare", { action: {} });
  const open = wantedBy({ operation: spare.id, arguments: { action: "MARK" } }, spare, [volume]);
  assert.deepEqual(open, { operation: spare.id, type: "disk", id: "", name: "", given: { action: "MARK" } });
});

test("a page that leads through something is told where one is on its way", () => {
  assert.deepEqual(placeOf("#/create/3").rest, ["3"]);
  assert.deepEqual(placeOf("#/replace/7"), { page: "replace", object: null, rest: ["7"] });
});

const replacement = await load("live/replacement.ts");
const bay = (number, disk) => ({ id: `c${number}`, localDeviceType: "CONTROLLER", localDeviceId: "c", connectedPortId: disk ? `d${disk}` : "", address: `0-${number}` });
const end = (number, disk) => ({ id: `d${disk}`, localDeviceType: "END_DEVICE", localDeviceId: disk, connectedPortId: `c${number}`, address: `0-${number}` });
const diskAt = (number, id, state = "NORMAL") => ({ id, type: "SATA", serialNumber: `S${id}`, controllerId: "c", address: `0-${number}`, state });
/** Of bays by their numbers, and disks that are only known. */
const machineOf = (bays, missing = []) => ({
  ...kMachine,
  disks: [...Object.entries(bays).flatMap(([number, id]) => (id ? [diskAt(number, id)] : [])), ...missing],
  ports: Object.entries(bays).flatMap(([number, id]) => (id ? [bay(number, id), end(number, id)] : [bay(number, null)])),
});
const kWhole = machineOf({ 1: "a", 2: "b", 3: "c", 4: null });
const kBegun = replacement.begun(kWhole, "b");
const kFound = { ...kBegun, isFound: true };

test("a replacement begins with the bay, and with those that are to stay", () => {
  assert.deepEqual(kBegun, {
    id: "b", name: "SATA Sb", portId: "c2", bay: "0-2",
    others: [{ id: "a", name: "SATA Sa", bay: "0-1" }, { id: "c", name: "SATA Sc", bay: "0-3" }],
    isFound: false, isTaken: false,
  });
  assert.equal(replacement.begun(kWhole, "x"), null);
  const gone = replacement.begun(machineOf({ 1: "a", 2: null }, [diskAt(2, "b", "MISSING")]), "b");
  assert.deepEqual([gone.portId, gone.others.map((other) => other.id)], ["c2", ["a"]]);
  const nowhere = machineOf({ 1: "a" }, [diskAt(9, "b", "MISSING")]);
  assert.equal(replacement.begun(nowhere, "b").portId, null);
});

for (const [told, bays, kept, step, lost, stray] of [
  ["nothing", { 1: "a", 2: "b", 3: "c" }, kBegun, "light", [], []],
  ["the bay is found", { 1: "a", 2: "b", 3: "c" }, kFound, "pull", [], []],
  ["it is pulled", { 1: "a", 2: null, 3: "c" }, kFound, "insert", [], []],
  ["a new one is there", { 1: "a", 2: "n", 3: "c" }, kFound, "take", [], []],
  ["a new one is there before anything was said", { 1: "a", 2: "n", 3: "c" }, kBegun, "take", [], []],
  ["it is told what for", { 1: "a", 2: "n", 3: "c" }, { ...kFound, isTaken: true }, "out", [], []],
  ["another one is pulled", { 1: null, 2: "b", 3: "c" }, kFound, "pull", ["a"], []],
  ["the new one is elsewhere", { 1: "a", 2: null, 3: "c", 4: "n" }, kFound, "insert", [], ["n"]],
  ["the old one is elsewhere", { 1: "a", 2: null, 3: "c", 4: "b" }, kFound, "insert", [], []],
]) {
  test(`of a replacement: ${told}`, () => {
    const machine = machineOf(bays);
    assert.equal(replacement.stepOf(machine, kept), step);
    assert.deepEqual(replacement.lostOthers(machine, kept).map((other) => other.id), lost);
    assert.deepEqual(replacement.strayDisks(machine, kept).map((disk) => disk.id), stray);
  });
}

const { outAfter } = await load("live/simulator.ts");
for (const [out, name, disk, left] of [
  [[], "pull-disk", "A", ["A"]],
  [["A"], "pull-disk", "A", ["A"]],
  [["A", "B"], "insert-disk", "A", ["B"]],
  [["A", "B"], "insert-blank-disk", "B", ["A"]],
  [["A"], "fail-disk", "B", ["A"]],
  [["A"], "insert-disk", "B", ["A"]],
]) {
  test(`of ${out.join("+") || "no disk"} out, ${name} of ${disk} leaves ${left.join("+") || "none"}`, () =>
    assert.deepEqual(outAfter(out, { name, body: { disk } }), left));
}

const { kLessons, stepsDone } = await load("live/lessons.ts");
const { en } = await load("messages/en.ts");
test("each lesson has a title and a sentence for each of its steps", () => {
  assert.ok(kLessons.length >= 6);
  for (const { id, steps } of kLessons) {
    const texts = en.lessons.all[id];
    assert.ok(texts.title && texts.about, id);
    assert.equal(texts.steps.length, steps.length, id);
  }
  assert.equal(Object.keys(en.lessons.all).length, kLessons.length);
});
test("a lesson's steps are done one after the other, and a step that is not yet done holds up those behind it", () => {
  const lesson = kLessons.find(({ id }) => id === "return");
  const disk = { id: "1", serialNumber: "A", arrayId: null, state: "NORMAL", usage: "PASS_THROUGH" };
  const pictureOf = (disks) => ({ entries: [], jobs: [], health: null, machine: { disks, volumes: [] } });
  const subject = lesson.subjectOf(pictureOf([disk]));
  assert.equal(subject.disk, disk);
  assert.equal(lesson.subjectOf(pictureOf([{ ...disk, state: "FAILED" }])), null);
  assert.equal(stepsDone(lesson, 0, pictureOf([disk]), "machine", subject), 0);
  assert.equal(stepsDone(lesson, 0, pictureOf([]), "overview", subject), 1);
  assert.equal(stepsDone(lesson, 0, pictureOf([]), "machine", subject), 2);
  assert.equal(stepsDone(lesson, 2, pictureOf([disk]), "machine", subject), 3);
  assert.equal(stepsDone(lesson, 3, pictureOf([disk]), "machine", subject), 3);
});

const { de } = await load("messages/de.ts");
const { languageOf } = await load("messages/language.ts");
const kDocumentsOwn = ["operations", "words", "fields"]; // by names of the document, each language as far as it needs to

/** All texts by their paths: plain ones as they are, others as they come out with telling values. */
function textsOf(form, above = "") {
  return Object.entries(form).flatMap(([key, value]) => {
    const place = above ? `${above}.${key}` : key;
    if (typeof value === "object") return kDocumentsOwn.includes(place) ? [] : textsOf(value, place);
    return [[place, typeof value === "function" ? value(...kTelling) : value]];
  });
}
const kTelling = [Object.assign(new Number(321), { disk: 441, volume: 442 }), 322, 323];
const tellingIn = (text) => [...new Set(text.match(/32[1-3]|44[12]/g) ?? [])].sort();

test("both catalogues have the same texts, which tell the same values", () => {
  const [english, german] = [textsOf(en), textsOf(de)];
  assert.deepEqual(german.map(([place]) => place), english.map(([place]) => place));
  german.forEach(([place, text], index) => assert.deepEqual(tellingIn(text), tellingIn(english[index][1]), place));
});
test("nothing in the German catalogue has been left as it is in English", () => {
  const alike = /^(?:product|work\.of|durations\..*|outcomes\.raised|signIn\.command|access\.commands\.\d\.command)$/;
  const words = ["Name", "Level", "Plan", "Volume", "Volumes", ""];
  const english = new Map(textsOf(en));
  const same = textsOf(de).filter(([place, text]) => text === english.get(place) && !alike.test(place) && !words.includes(text));
  assert.deepEqual(same.filter(([place]) => place !== "did" && place !== "jobs.object"), []);
});
for (const [told, one] of [
  [de.calmVolumes(1), "Das Volume ist verfügbar."],
  [de.create.canDisks(1), "1 Datenträger kommt in Frage."],
  [de.create.canDisks(2), "2 Datenträger kommen in Frage."],
  [de.create.canArrays(1), "1 Array kann es aufnehmen."],
  [de.durations.days(1), "1 Tag"],
  [de.durations.days(2), "2 Tage"],
  [de.machine.controller("RAID", "1", 1), "Modus RAID, Version 1, 1 Einschub"],
  [de.alarms.times(1), "einmal aufgetreten"],
  [en.machine.controller("RAID", "1", 1), "RAID mode, version 1, 1 bay"],
  [en.alarms.times(1), "came once"],
]) {
  test(`a number and its word agree: ${one}`, () => assert.equal(told, one));
}
for (const [wanted, language] of [
  [["de-AT", "en"], "de"],
  [["fr", "de"], "de"],
  [["en-US", "de"], "en"],
  [["DE"], "de"],
  [["fr"], "en"],
  [["constructor"], "en"],
  [[], "en"],
]) {
  test(`a browser that wants ${wanted.join(", ") || "nothing"} gets ${language}`, () =>
    assert.equal(languageOf(wanted), language));
}
test("in German, names that the document gives to changes, to what is known of objects, and to values are German", () => {
  const { paths, components } = JSON.parse(readFileSync(path.join(web, "../docs/openapi.json"), "utf8"));
  const told = Object.values(paths).flatMap((item) => Object.entries(item));
  const changes = told.filter(([method]) => method !== "get").map(([, each]) => each);
  assert.ok(changes.length > 20);
  assert.deepEqual(changes.map((each) => each.operationId).filter((id) => !de.operations[id]), []);

  const membersOf = (schema, above = "") =>
    Object.entries(schema?.properties ?? {}).flatMap(([name, each]) =>
      each.properties ? membersOf(each, `${above}${name} `) : [`${above}${name}`],
    );
  const mirn = changes.filter(({ operationId }) => !/^simulator|Session$|Code$|^whatIf$/.test(operationId));
  const bodies = mirn.map((each) => each.requestBody?.content["application/json"].schema);
  const objects = ["EndDevice", "Volume", "Array", "Controller"].map((name) => components.schemas[name]);
  const names = new Set([...bodies, ...objects].flatMap((schema) => membersOf(schema)));
  const query = told.find(([, each]) => each.operationId === "listHistory")[1].parameters;
  for (const { name } of query) names.add(name);
  assert.deepEqual([...names].filter((name) => !de.fields[name]), []);

  // Those of machines, units and forms stay.
  const stays = /^(?:SATA|NVME|NVMe|Lyx|SCU|AHCI|RAID|RAID_\d+|SIZE_\d+[KM]B|X8_[AB]|N\/A|[\d.]+ Gb\/s)$/;
  const valuesOf = (schema) => [
    ...(schema?.enum ?? []),
    ...Object.values(schema?.properties ?? {}).flatMap(valuesOf),
  ];
  const values = new Set([...bodies, ...objects, ...query.map(({ schema }) => schema)].flatMap(valuesOf));
  const unknown = [...values].filter((word) => !stays.test(word) && !de.words[word.replace(/^RWH_/, "")]);
  assert.deepEqual(unknown, []);
});
test("numbers, sizes, dates and durations follow the language that was chosen", async () => {
  globalThis.localStorage = { getItem: () => "de" };
  buildSync({
    entryPoints: [path.join(web, "src/format/units.ts")], bundle: true, format: "esm", outfile: path.join(folder, "german.mjs"),
  });
  const german = await import(path.join(folder, "german.mjs"));
  delete globalThis.localStorage;
  assert.equal(german.size("4398046511104"), "4,4 TB");
  assert.equal(german.size("18446744073709551615"), "18.447 PB");
  assert.equal(german.size(""), "unbekannt");
  assert.equal(german.duration(90061), "1 Tag 1 Std.");
  assert.equal(german.month("2026-03"), "März 2026");
  assert.match(german.moment("2025-03-02T11:59:58Z", 0), /^2\. März 2025, \d\d:\d\d:58$/);
  assert.equal(german.words("DEGRADED"), "Redundanz eingeschränkt");
  assert.equal(german.operationWords("verifyVolume"), "Volume überprüfen");
  assert.equal(german.words("SOMETHING_NEW"), "something new");
});
