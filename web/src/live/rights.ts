// Who may do what, as the service's document tells.
import { createContext } from "preact";
import { useContext, useEffect, useState } from "preact/hooks";
import { operationOf } from "../api/document";
import type { Role } from "../api/schema";
import { messages } from "../messages/messages";
import { useOperations } from "./operations";

/** The role of who is signed in, for parts deep in a page. */
export const RoleContext = createContext<Role>("observe");

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

/** Why one may not ask for an operation, by its id; null where one may. */
export function useReasons(): (operation: string) => string | null {
  const own = useContext(RoleContext);
  const known = useOperations();
  return (operation) => {
    const needed = known.get(operation)?.role;
    return needed === undefined || reaches(own, needed) ? null : messages.takesRole(needed, own);
  };
}
