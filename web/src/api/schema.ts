// The forms that the service answers in, by the names that the console uses. All come from the document.
import type { components, operations } from "./openapi";

type Answer<Name extends keyof operations> = operations[Name] extends {
  responses: { 200: { content: { "application/json": infer Body } } };
}
  ? Body
  : never;

/** A read of the plug-in's: its document also tells the form of a dry run, which the console never asks of reads. */
type Published<Name extends keyof components["schemas"]> = components["schemas"][Name];

export type Health = Answer<"getHealth">;
export type Cause = Health["causes"][number];
export type Step = Cause["steps"][number];
export type Severity = Health["severity"];
export type ObjectName = Cause["object"];
export type Jobs = Answer<"listJobs">;
export type Job = Jobs["items"][number];
export type JobCount = Answer<"getJobStatistics">["items"][number];
export type Alarm = Answer<"listAlarms">["items"][number];
export type Readiness = Answer<"getMachineReadiness">;
export type ReadinessItem = Readiness["items"][number];
export type WhatIf = Answer<"whatIf">;
export type WhatIfEvent = NonNullable<
  operations["whatIf"]["requestBody"]
>["content"]["application/json"]["events"][number];
export type HistoryEntry = Answer<"listHistory">["items"][number];
export type Caller = Answer<"getSession">;
export type Role = Caller["role"];
export type Service = Answer<"getService">;
export type Actions = Answer<"listActions">;
export type Action = Actions["actions"][number];
export type Candidates = Answer<"listCandidates">;

export type Controller = Published<"Controller">;
export type Disk = Published<"EndDevice">;
export type Port = Published<"Port">;
export type StorageArray = Published<"Array">;
export type Volume = Published<"Volume">;
export type Plan = Published<"ChangePlan">;
export type Problem = Published<"Problem">;
export type Setting = Published<"Config">["locate_timeout"];
export type Version = Published<"Version">;
