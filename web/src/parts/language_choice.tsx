import { choose, kLanguages, language, type Language } from "../messages/language";

/** The other languages, each by its own name, so that whoever reads it finds it. */
export function LanguageChoice() {
  const others = (Object.keys(kLanguages) as Language[]).filter((each) => each !== language);
  return (
    <>
      {others.map((each) => (
        <button key={each} type="button" class="quiet" lang={each} data-language={each} onClick={() => choose(each)}>
          {kLanguages[each]}
        </button>
      ))}
    </>
  );
}
