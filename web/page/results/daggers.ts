import type { Analysis } from "../../engine/engine.js";
import { language } from "../words/words.ts";

/** What the daggers behind means say: why those norms are to be doubted. */
export function daggersOf(analysis: Analysis): string[] {
  const reasons = new Set(analysis.items.map((item) => item.unverified[language.value]));
  reasons.delete("");
  return [...reasons].map((reason) => `† ${reason}`);
}
