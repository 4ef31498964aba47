// Which language the console speaks: the one chosen on the page, else the first of the browser's that there is.
export const kLanguages = { en: "English", de: "Deutsch" };
export type Language = keyof typeof kLanguages;

const kKey = "mirn.language";

const isLanguage = (text: string | null | undefined): text is Language => text != null && Object.hasOwn(kLanguages, text);

/** The first that is there of tags such as "de-AT"; English where there is none. */
export function languageOf(wanted: readonly string[]): Language {
  return wanted.map((tag) => tag.toLowerCase().split("-")[0]).find(isLanguage) ?? "en";
}

function kept(): string | null {
  try {
    return localStorage.getItem(kKey);
  } catch {
    return null; // a browser that keeps nothing
  }
}

function chosen(): Language {
  const choice = kept();
  return isLanguage(choice) ? choice : languageOf(globalThis.navigator?.languages ?? []);
}

/** It stays the same until the page is loaded anew. */
export const language = chosen();

/** Keeps the choice for this browser and loads the page anew in it: what has been begun is kept as over any reload. */
export function choose(next: Language): void {
  try {
    localStorage.setItem(kKey, next);
  } finally {
    location.reload();
  }
}
