// Files that the service gives, into the browser's folder for them.
import { exchange, refusalOf } from "../api/client";

/** Raises a `Refusal`, and where the answer breaks off: no part is taken for the whole. */
export async function download(path: string, name: string): Promise<void> {
  const answer = await exchange(path);
  if (!answer.ok) throw await refusalOf(answer);
  const address = URL.createObjectURL(await answer.blob());
  const link = document.createElement("a");
  link.href = address;
  link.download = name;
  link.click();
  URL.revokeObjectURL(address);
}
