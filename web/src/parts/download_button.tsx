import { useState } from "preact/hooks";
import { wordsOf } from "../live/answer";
import { download } from "../live/download";
import type { Right } from "../live/rights";
import { messages } from "../messages/messages";
import { RightButton } from "./right_button";

interface Props {
  label: string;
  path: string;
  file: string;
  right: Right;
}

/** Gives a file of the service's; says when it could not be had as a whole. */
export function DownloadButton({ label, path, file, right }: Props) {
  const [isBusy, setBusy] = useState(false);
  const [words, setWords] = useState<string | null>(null);
  const press = (): void => {
    setBusy(true);
    setWords(null);
    download(path, file)
      .then(
        () => setWords(messages.downloaded(file)),
        (failure: unknown) => setWords(wordsOf(failure)),
      )
      .finally(() => setBusy(false));
  };
  return (
    <div class="locate">
      <RightButton label={label} right={right} isBusy={isBusy} onPress={press} />
      <span role="status">{words}</span>
    </div>
  );
}
