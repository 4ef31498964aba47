import type { ObjectName } from "../api/schema";

/** An object's name, leading to it in the picture of the machine. */
export function ObjectLink({ object }: { object: ObjectName }) {
  if (object.id === null) return <span>{object.name}</span>;
  return <a href={`#/machine/${object.type}/${object.id}`}>{object.name}</a>;
}
