// From a code or a token to somebody who is known.
import { useEffect, useState } from "preact/hooks";
import { ask, Refusal, whenSignedOut } from "../api/client";
import type { Caller } from "../api/schema";
import { dropToken, forgetAll, keepToken, takeCode, token } from "../api/session";
import { messages } from "../messages/messages";

export type SignIn =
  | { kind: "asking" }
  | { kind: "stranger"; words: string | null }
  | { kind: "known"; caller: Caller };

export interface SignInDesk {
  state: SignIn;
  giveToken: (value: string) => void;
  signOut: () => void;
}

const wordsOf = (failure: unknown, unknownWords: string): string => {
  if (!(failure instanceof Refusal)) throw failure;
  if (failure.status === 401) return unknownWords;
  return messages.failed(failure.status === 0 ? messages.noAnswer : failure.message);
};

/** Whoever has the address takes its code; otherwise the token that this tab has kept. */
async function begin(): Promise<SignIn> {
  const code = takeCode();
  try {
    if (code) {
      dropToken();
      const made = await ask<{ token: string; lifeSeconds: number }>("session", { method: "POST", body: { code } });
      keepToken(made.token, made.lifeSeconds);
    }
    return token() ? await known(messages.signIn.ended) : { kind: "stranger", words: null };
  } catch (failure) {
    return { kind: "stranger", words: wordsOf(failure, messages.signIn.unknownCode) };
  }
}

async function known(unknownWords: string): Promise<SignIn> {
  try {
    return { kind: "known", caller: await ask<Caller>("session") };
  } catch (failure) {
    dropToken();
    return { kind: "stranger", words: wordsOf(failure, unknownWords) };
  }
}

export function useSignIn(): SignInDesk {
  const [state, setState] = useState<SignIn>({ kind: "asking" });
  useEffect(() => {
    whenSignedOut(() => {
      dropToken();
      setState({ kind: "stranger", words: messages.signIn.ended });
    });
    const again = (): void => void begin().then(setState);
    const onAddress = (): void => {
      if (location.hash.startsWith("#code=")) again();
    };
    again();
    window.addEventListener("hashchange", onAddress);
    return () => window.removeEventListener("hashchange", onAddress);
  }, []);
  const giveToken = (value: string): void => {
    setState({ kind: "asking" });
    keepToken(value);
    void known(messages.signIn.unknownToken).then(setState);
  };
  const signOut = (): void => {
    // Of a token that is no session's there is none to end; it is forgotten here all the same.
    const end = ask("session", { method: "DELETE" }).catch(() => null);
    void end.then(() => {
      forgetAll();
      setState({ kind: "stranger", words: null });
    });
  };
  return { state, giveToken, signOut };
}
