// The types that openapi-typescript makes of the document fit what the product answered, and refuse what it does not
// take: each "@ts-expect-error" is an error of the compiler where the types are wider than that.
import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import type { components, operations } from "./openapi.js";

type Volume = components["schemas"]["Volume"];
type Problem = components["schemas"]["Problem"];
type Plan = components["schemas"]["Plan"];
type Volumes = Exclude<operations["listVolumes"]["responses"][200]["content"]["application/json"], Plan>;
type Rename = operations["renameVolume"];
type Creation = operations["createVolume"]["requestBody"]["content"]["application/json"];

interface Example {
  value: unknown;
}
interface Operation {
  operationId: string;
  responses: Record<string, { content?: Record<string, { examples?: Record<string, Example> }> }>;
  "x-mirn": { noun: string; verb: string; columns?: string[]; effect: string; role: string };
}
interface OpenApi {
  paths: Record<string, Record<string, Operation>>;
}

const document = JSON.parse(readFileSync(process.argv[2], "utf8")) as OpenApi;
const all = Object.values(document.paths).flatMap((item) => Object.values(item));

function operation(id: string): Operation {
  const found = all.find((candidate) => candidate.operationId === id);
  assert.ok(found, id);
  return found;
}

function recorded(id: string, status: string): unknown {
  const example = operation(id).responses[status].content?.["application/json"].examples?.recorded;
  assert.ok(example, `${id} has no recorded answer`);
  return example.value;
}

/** A row of a table, as a client shows it that knows nothing but the document. */
function cells(item: Record<string, unknown>, columns: string[]): string[] {
  return columns.map((column) => String(item[column]));
}

const volumes = recorded("listVolumes", "200") as Volumes;
assert.ok(volumes.length > 0);
const states: Volume["state"][] = volumes.map((volume) => volume.state);
assert.ok(states.every((state) => state !== "UNKNOWN"));
const sizes: string[] = volumes.map((volume) => volume.totalSize);
assert.ok(sizes.every((size) => /^\d+$/.test(size)));

const columns = operation("listVolumes")["x-mirn"].columns;
assert.ok(columns);
assert.ok(cells(volumes[0], columns).every((cell) => cell !== "undefined"));

// Two words ask for one operation.
const commands = all.map((one) => `${one["x-mirn"].noun} ${one["x-mirn"].verb}`);
assert.equal(new Set(commands).size, commands.length);

const path: Rename["parameters"]["path"] = { volumeId: volumes[0].id };
const body: Rename["requestBody"]["content"]["application/json"] = { name: "Other" };
assert.equal(path.volumeId, volumes[0].id);
assert.deepEqual(Object.keys(body), ["name"]);

// @ts-expect-error a name is a text
const wrongName: typeof body = { name: 1 };
// @ts-expect-error a volume is of no such level
const wrongLevel: Creation["raidLevel"] = "RAID_7";
// @ts-expect-error a volume's size is a text, since a number would lose digits
const wrongSize: Volume["totalSize"] = 1;
// @ts-expect-error the type of a problem is always told
const wrongProblem: Problem = { title: "Conflict", status: 409, detail: "In use" };
void [wrongName, wrongLevel, wrongSize, wrongProblem];

console.log(`${all.length} operations, ${volumes.length} recorded volumes`);
