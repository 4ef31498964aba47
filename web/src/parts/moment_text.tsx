import { moment } from "../format/units";

/** A moment, to be read by people and programs; what is no moment stays as it is. */
export function MomentText({ at }: { at: string }) {
  return Number.isNaN(Date.parse(at)) ? <span>{at}</span> : <time dateTime={at}>{moment(at)}</time>;
}
