// What has changed since the earlier film, in the items of the chosen analyses.
import { computed } from "@preact/signals";
import type { Analysis, Case, Item, Row, RowText } from "../../engine/engine.js";
import { chosenAnalyses, engine, landmarkTable } from "../state/desk.ts";
import { askedAtRest, construct, rows } from "../state/measuring.ts";
import { earlier } from "../view/tracings.ts";
import { signed } from "../readings/number_words.ts";
import { language } from "../words/words.ts";

export interface Change {
  readonly item: Item;
  /** Values in words; "" where there is none. */
  readonly before: string;
  readonly now: string;
  /** "+1.2"; "" for what is not measured in both or is no number. */
  readonly change: string;
}

export interface AnalysisChanges {
  readonly analysis: Analysis;
  readonly changes: readonly Change[];
}

interface Measured {
  readonly values: Float64Array;
  readonly texts: readonly RowText[];
}

/** Of another case than the session's, measured as that is: points that others determine are constructed. */
function measured(record: Case, analyses: readonly Analysis[]): Measured | null {
  const session = engine.value!.measure(record);
  try {
    if (analyses.some(({ caseKind }) => caseKind !== record.kind)) return null;
    session.choose(analyses);
    construct(session, record, landmarkTable.value);
    return { values: session.measure().value.slice(), texts: session.texts(language.value) };
  } finally {
    session.delete();
  }
}

const ofEarlier = computed(() => earlier.value && engine.value && measured(earlier.value, chosenAnalyses.value));

const ofNow = askedAtRest<Measured | null>((session) => {
  if (!earlier.value) return null;
  return { values: session.measure().value.slice(), texts: session.texts(language.value) };
}, null);

/** Of the values as they are, not as they are shown; with as many digits as those. */
function changeWords(before: number, now: number, shown: string): string {
  const difference = now - before;
  if (Number.isNaN(difference)) return "";
  const digits = shown.split(".")[1]?.length ?? 0;
  return signed(difference, digits);
}

function changesIn(all: readonly Row[], before: Measured, now: Measured): AnalysisChanges[] {
  const found = new Map<Analysis, Change[]>();
  all.forEach(({ analysis, item }, row) => {
    const [was, is] = [before.texts[row]?.value ?? "", now.texts[row]?.value ?? ""];
    if (item.heading || (was === "" && is === "")) return;
    const change = { item, before: was, now: is, change: changeWords(before.values[row]!, now.values[row]!, is) };
    found.set(analysis, [...(found.get(analysis) ?? []), change]);
  });
  return [...found].map(([analysis, changes]) => ({ analysis, changes }));
}

/** Analyses with an item that is measured on one of the films at least. */
export const changes = computed<readonly AnalysisChanges[]>(() => {
  const [before, now] = [ofEarlier.value, ofNow.value];
  const isSameChoice = before?.texts.length === now?.texts.length; // else one of them is still to follow
  return before && now && isSameChoice ? changesIn(rows.value, before, now) : [];
});
