import type { Analysis } from "../../engine/engine.js";

/** What a new case begins with: few landmarks, asked for by most. */
const usual = new Set(["Steiner", "Downs", "Tweed", "Wits"]);

export function usualAnalyses(all: readonly Analysis[]): string[] {
  const chosen = all.filter(({ name }) => usual.has(name));
  return (chosen.length > 0 ? chosen : all).map(({ name }) => name);
}
