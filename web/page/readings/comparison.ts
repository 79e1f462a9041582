// Two readings of the film on the desk, beside each other.
import { computed } from "@preact/signals";
import type { Case, ReadingComparison } from "../../engine/engine.js";
import { isReadAgain, otherReading } from "../files/keeping.ts";
import { panel } from "../parts/panel_choice.ts";
import { chosenAnalyses, engine, history, record, view, work } from "../state/desk.ts";
import type { Point, Work } from "../state/document.ts";
import { askedAtRest, completed } from "../state/measuring.ts";
import { positionOf } from "../state/work.ts";
import { errorWords } from "../words/words.ts";

export const isBlind = computed(() => view.value.isBlind === true);

/** What a film is read again with: all but what was placed and what rests on that. */
export function withoutReading(now: Work): Work {
  const { user: _user, vertebrae: _vertebrae, outlines: _outlines, palate: _palate, ...rest } = now.case;
  return { ...now, case: { ...rest, landmarks: {} } };
}

const isTurnedAlike = computed(() => {
  const other = otherReading.value?.document.work.orientation;
  const { mirrored, quarters } = work.value.orientation;
  return other?.mirrored === mirrored && other.quarters === quarters;
});

/** The other reading as it can be compared: null while that is hidden, or where there is none. */
const other = computed<Case | null>(() => (isBlind.value ? null : (otherReading.value?.document.work.case ?? null)));

/** Both, the first one first. */
export function bothReadings(): readonly [Case, Case] | null {
  if (!other.peek()) return null;
  const pair = [completed(other.peek()!), completed(record.peek())] as const;
  return isReadAgain.peek() ? pair : [pair[1], pair[0]];
}

export type Comparison = { readonly found: ReadingComparison } | { readonly trouble: "turned" | { readonly words: string } };

const compared = askedAtRest<Comparison | null>(() => {
  void chosenAnalyses.value;
  if (!other.value || !engine.value) return null;
  if (!isTurnedAlike.value) return { trouble: "turned" };
  try {
    const [first, second] = bothReadings()!;
    return { found: engine.value.compareReadings(first, second, chosenAnalyses.value) };
  } catch (error) {
    return { trouble: { words: errorWords(error) } };
  }
}, null);

/** null where there are no two readings, or one is hidden. */
export const comparison = computed(() => (other.value ? compared.value : null));

/** Where both readings have a landmark, while they are looked at: the other's place and this one's. */
export const readingScatter = computed<readonly (readonly [other: Point, now: Point])[]>(() => {
  if (!other.value || panel.value !== "compare" || !isTurnedAlike.value) return [];
  const now = record.value;
  const pairs: (readonly [Point, Point])[] = [];
  for (const points of [other.value.landmarks, other.value.user ?? {}, other.value.vertebrae ?? {}])
    for (const [name, at] of Object.entries(points)) {
      const here = positionOf(now, name);
      if (here) pairs.push([at, here]);
    }
  return pairs;
});

export function finishReading(): void {
  history.commit();
  history.look({ isBlind: false, current: null });
  panel.value = "compare";
}
