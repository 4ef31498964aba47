import { useState } from "preact/hooks";
import { messages } from "../messages/messages";
import { LanguageChoice } from "../parts/language_choice";

interface Props {
  words: string | null;
  onToken: (token: string) => void;
}

export function SignInPage({ words, onToken }: Props) {
  const [value, setValue] = useState("");
  const submit = (event: Event): void => {
    event.preventDefault();
    if (value.trim() !== "") onToken(value.trim());
  };
  return (
    <main class="sign-in">
      <div class="card">
        <h1>
          {messages.product}: {messages.signIn.title}
        </h1>
        {words && (
          <p class="refusal" role="alert">
            {words}
          </p>
        )}
        <p>{messages.signIn.how}</p>
        <pre>{messages.signIn.command}</pre>
        <form onSubmit={submit}>
          <label for="token">{messages.signIn.token}</label>
          <input
            id="token"
            type="password"
            autoComplete="off"
            value={value}
            onInput={(event) => setValue(event.currentTarget.value)}
          />
          <button type="submit" class="primary" disabled={value.trim() === ""}>
            {messages.signIn.button}
          </button>
        </form>
      </div>
      <div class="sign-in-foot">
        <LanguageChoice />
      </div>
    </main>
  );
}
