// What there is to ask of the service, as its document tells.
import { Refusal } from "./client";

export interface Field {
  name: string;
  help: string;
  kind: "text" | "boolean" | "list" | "moment" | "number";
  words: string[]; // all that it may be; empty where nobody lists them
  isNeeded: boolean; // where it counts at all
  hasCandidates: boolean; // whether the service lists what it may be
  when: { field: string; word: string } | null; // it counts with this word of another one alone
  unit: string; // of a number or a text of digits; empty: none
  bounds: { least: number; most: number } | null; // of a number
}

export interface Operation {
  id: string;
  method: string;
  path: string; // a template
  summary: string;
  places: string[]; // the names in it
  fields: Field[];
  query: Field[]; // what its address may tell
  role: string; // who may ask for it, at least
  work: Work[]; // what it begins
}

export interface Work {
  kind: string;
  when?: { field: string; word?: string };
}

const kNoField: Omit<Field, "name"> = {
  help: "",
  kind: "text",
  words: [],
  isNeeded: false,
  hasCandidates: false,
  when: null,
  unit: "",
  bounds: null,
};

/** An argument by its name; one of which nothing is known where the document has none. */
export const fieldOf = (operation: Operation, name: string): Field =>
  operation.fields.find((field) => field.name === name) ?? { name, ...kNoField };

interface Schema {
  type?: string;
  format?: string;
  enum?: string[];
  description?: string;
  minimum?: number;
  maximum?: number;
  properties?: Record<string, Schema>;
  required?: string[];
  allOf?: { then?: { required?: string[] } }[];
  "x-mirn"?: { candidates?: unknown; unit?: string; when?: { field: string; word?: string } };
}

interface Told {
  operationId: string;
  summary: string;
  requestBody?: { content: Record<string, { schema: Schema }> };
  parameters?: { name?: string; in?: string; description?: string; required?: boolean; schema?: Schema }[];
  "x-mirn"?: { role?: string; work?: Work[] };
}

type Document = { paths: Record<string, Record<string, Told>> };

let document_: Promise<Map<string, Operation>> | null = null;

/** All of them, by their ids. Raises a `Refusal`. */
export function operations(): Promise<Map<string, Operation>> {
  document_ ??= load().catch((failure: unknown) => {
    document_ = null; // the next one asks again
    throw failure;
  });
  return document_;
}

/** An operation by its id. Raises a `Refusal`. */
export async function operationOf(id: string): Promise<Operation> {
  const found = (await operations()).get(id);
  if (!found) throw new Refusal(0, id);
  return found;
}

async function load(): Promise<Map<string, Operation>> {
  const answer = await fetch(new URL("openapi.json", document.baseURI)).catch(() => null);
  if (!answer?.ok) throw new Refusal(answer?.status ?? 0, answer?.statusText ?? "");
  return operationsIn((await answer.json()) as Document);
}

export function operationsIn(told: Document): Map<string, Operation> {
  const found = new Map<string, Operation>();
  for (const [path, item] of Object.entries(told.paths)) {
    for (const [method, each] of Object.entries(item)) {
      found.set(each.operationId, {
        id: each.operationId,
        method: method.toUpperCase(),
        path: path.replace(/^\/api\/v1\//, ""),
        summary: each.summary,
        places: [...path.matchAll(/\{(\w+)\}/g)].map((match) => match[1] ?? ""),
        fields: fieldsOf(each.requestBody?.content["application/json"]?.schema ?? {}),
        query: queryOf(each),
        role: each["x-mirn"]?.role ?? "",
        work: each["x-mirn"]?.work ?? [],
      });
    }
  }
  return found;
}

/** Those that every operation has stand by reference, and are nothing to be filled in. */
function queryOf(told: Told): Field[] {
  return (told.parameters ?? []).flatMap(({ name, in: where, description, required, schema }) =>
    name && where === "query" ? [fieldIn(name, { ...schema, description: description ?? "" }, required ?? false)] : [],
  );
}

function fieldsOf(schema: Schema): Field[] {
  const needed = new Set([...(schema.required ?? []), ...(schema.allOf ?? []).flatMap((each) => each.then?.required ?? [])]);
  return Object.entries(schema.properties ?? {}).map(([name, each]) => fieldIn(name, each, needed.has(name)));
}

const kKinds: Record<string, Field["kind"]> = { boolean: "boolean", array: "list", integer: "number" };

function fieldIn(name: string, schema: Schema, isNeeded: boolean): Field {
  const own = schema["x-mirn"] ?? {};
  const hasBounds = schema.minimum !== undefined && schema.maximum !== undefined;
  return {
    name,
    help: schema.description ?? "",
    kind: schema.format === "date-time" ? "moment" : (kKinds[schema.type ?? ""] ?? "text"),
    words: schema.enum ?? [],
    isNeeded,
    hasCandidates: own.candidates !== undefined,
    when: own.when?.word === undefined ? null : { field: own.when.field, word: own.when.word },
    unit: own.unit ?? "",
    bounds: hasBounds ? { least: schema.minimum ?? 0, most: schema.maximum ?? 0 } : null,
  };
}
