// Who is signed in. The token stays with this tab, and leaves it in the Authorization field only.
const kToken = "token";
const kEnd = "tokenEnd";

export const token = (): string | null => sessionStorage.getItem(kToken);

/** Of a session, when it ends by itself: a moment; null of another token, which nobody knows of. */
export const sessionEnd = (): string | null => sessionStorage.getItem(kEnd);

/** `lifeSeconds`: of a session that has just begun. */
export function keepToken(value: string, lifeSeconds: number | null = null): void {
  sessionStorage.setItem(kToken, value);
  if (lifeSeconds === null) sessionStorage.removeItem(kEnd);
  else sessionStorage.setItem(kEnd, new Date(Date.now() + lifeSeconds * 1000).toISOString());
}

export function dropToken(): void {
  sessionStorage.removeItem(kToken);
  sessionStorage.removeItem(kEnd);
}

/** All that this tab has kept: the token, and what somebody has begun. */
export const forgetAll = (): void => sessionStorage.clear();

/** The code of a printed address, taken out of the address bar and its history; null where there is none. */
export function takeCode(): string | null {
  const found = /^#code=([\w-]+)$/.exec(location.hash);
  if (!found) return null;
  history.replaceState(null, "", location.pathname + location.search);
  return found[1] ?? null;
}
