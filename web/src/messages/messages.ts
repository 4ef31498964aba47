// The catalogue that the console speaks from.
import { de } from "./de";
import { en, type Messages } from "./en";
import { language } from "./language";

export const messages: Messages = { en, de }[language];
