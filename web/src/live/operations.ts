// The service's operations, as soon as its document is there.
import { useEffect, useState } from "preact/hooks";
import { operations, type Operation } from "../api/document";

/** Empty before. */
export function useOperations(): Map<string, Operation> {
  const [known, setKnown] = useState<Map<string, Operation>>(new Map());
  useEffect(() => {
    // Without it there are no forms; what is wrong then the picture tells.
    operations().then(setKnown, () => undefined);
  }, []);
  return known;
}
