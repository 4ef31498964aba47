import type { Role, Setting } from "../api/schema";
import { useAnswer } from "../live/answer";
import { useRight } from "../live/rights";
import { messages } from "../messages/messages";
import { SettingForm } from "../parts/setting_form";

/** The service's settings. */
export function SettingsPage({ role }: { role: Role }) {
  const { body, words } = useAnswer<Record<string, Setting>>("mirn/config");
  const right = useRight("setConfig", role);
  return (
    <>
      <h1>{messages.pages.settings}</h1>
      {words && (
        <p class="refusal" role="alert">
          {words}
        </p>
      )}
      {!body && !words && <p class="muted">{messages.paged.looking}</p>}
      {Object.entries(body ?? {}).map(([name, setting]) => (
        <SettingForm key={name} name={name} setting={setting} right={right} />
      ))}
    </>
  );
}
