// All that the page says, in the language that was chosen.
import { computed, effect, signal } from "@preact/signals";
import { EngineError } from "../../engine/engine.js";
import { remembered } from "../parts/remembered.ts";
import { english } from "./english.ts";
import { japanese } from "./japanese.ts";

export type Language = "en" | "ja";
export type Words = typeof english;

const browsers: Language = navigator.language.startsWith("ja") ? "ja" : "en";
export const language = remembered<Language>("language", browsers, (value) => value === "en" || value === "ja");
export const words = computed<Words>(() => (language.value === "ja" ? japanese : english));

effect(() => {
  document.documentElement.lang = language.value;
  document.title = words.value.title;
});

/** Said once, in a box at the foot of the page. */
export const notice = signal<{ readonly text: string; readonly isError: boolean } | null>(null);

export function say(text: string): void {
  notice.value = { text, isError: false };
}

/** An error that does not say which file it is about. */
export function named(error: unknown, file: string): unknown {
  const words = errorWords(error);
  return words.includes(file) ? error : new Error(`${file}: ${words}`);
}

/** With the place and the way out, where the engine knows them. */
export function errorWords(error: unknown): string {
  if (!(error instanceof Error)) return String(error);
  if (!(error instanceof EngineError)) return error.message;
  const own = words.peek().engineErrors[error.key];
  if (own) return own(error.names.join(words.peek().and));
  const place = [error.file, error.line, error.column].filter(Boolean).join(":");
  return [place ? `${place}: ${error.message}` : error.message, error.excerpt && `    ${error.excerpt}`, error.wayOut].filter(Boolean).join("\n");
}

/** Below what was said of the same files before. */
export function alsoSay(text: string): void {
  const before = notice.peek();
  notice.value = { text: [before?.text, text].filter(Boolean).join("\n"), isError: before?.isError ?? false };
}

export function alsoSayErrors(errors: readonly unknown[]): void {
  alsoSay(errors.map(errorWords).join("\n"));
  notice.value = { text: notice.peek()!.text, isError: true };
}

export function sayError(error: unknown): void {
  notice.value = { text: errorWords(error), isError: true };
}

/** What was said of something else need not be read any more. */
export function sayNothing(): void {
  notice.value = null;
}
