// Sentences that films give rise to, in the languages of the page. A sentence is a key and its values, so that it can be
// kept, compared and sent by a worker, and said when the language is known.
import { english } from "./sentences.en.ts";
import { japanese } from "./sentences.ja.ts";

export type SentenceKey = keyof typeof english;

export interface Sentence {
  readonly key: SentenceKey;
  /** For the places in braces: "{width}". A sentence stands for its own words. */
  readonly values: Readonly<Record<string, string | number | Sentence>>;
}

export type SentenceLanguage = "en" | "ja";

export function sentence(key: SentenceKey, values: Sentence["values"] = {}): Sentence {
  return { key, values };
}

/** The words of a sentence. Numbers come with up to six digits, more than any header means. */
export function wordsOf(said: Sentence, language: SentenceLanguage): string {
  const words = (language === "ja" ? japanese : english)[said.key];
  return words.replace(/\{(\w+)\}/g, (place, name: string) => {
    const value = said.values[name];
    if (value === undefined) return place;
    if (typeof value === "object") return wordsOf(value, language);
    return typeof value === "number" ? sixDigits(value) : value;
  });
}

/** As C's "%g" writes it. Whole numbers are counts and come with all their digits. */
function sixDigits(value: number): string {
  if (Number.isInteger(value) || !Number.isFinite(value)) return String(value);
  const [digits = "", power] = value.toPrecision(6).split("e");
  const size = Math.floor(Math.log10(Math.abs(Number(value.toPrecision(6)))));
  if (power === undefined && size >= -4) return digits.includes(".") ? digits.replace(/\.?0+$/, "") : digits;
  const [short = "", exponent = "0"] = value.toExponential(5).split("e");
  const sign = exponent.startsWith("-") ? "-" : "+";
  return `${short.replace(/\.?0+$/, "")}e${sign}${exponent.replace(/^[+-]/, "").padStart(2, "0")}`;
}

/** What stops a film from being read. */
export class FilmError extends Error {
  readonly said: Sentence;

  constructor(key: SentenceKey, values: Sentence["values"] = {}) {
    super(wordsOf(sentence(key, values), "en"));
    this.said = sentence(key, values);
  }
}
