// Who may do what, as the service's document tells.
import { useEffect, useState } from "preact/hooks";
import { operationOf } from "../api/document";
import type { Role } from "../api/schema";
import { messages } from "../messages/en";

const kRoles = ["none", "observe", "operate", "administer"];

/** Whether a role is as great as the one that is needed. */
export const reaches = (own: string, needed: string): boolean => kRoles.indexOf(own) >= kRoles.indexOf(needed);

export interface Right {
  isThere: boolean; // false also until the document has been read
  words: string | null; // why not; null where one may
}

/** Whether somebody may ask for an operation, and whether the host has it at all. */
export function useRight(operation: string, own: Role): Right {
  const [right, setRight] = useState<Right>({ isThere: false, words: null });
  useEffect(() => {
    operationOf(operation).then(
      ({ role }) => setRight({ isThere: true, words: reaches(own, role) ? null : messages.takesRole(role, own) }),
      () => setRight({ isThere: false, words: null }),
    );
  }, [operation, own]);
  return right;
}
