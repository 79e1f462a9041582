// The words in the table of results. Each stands in a signal of its own, so that a dragged landmark changes the few
// that it has to and the table is not built anew.
import { type Signal, batch, effect, signal, untracked } from "@preact/signals";
import { RowState } from "../../engine/engine.js";
import type { RowText } from "../../engine/engine.js";
import { record } from "../state/desk.ts";
import { type RowNumbers, numbers, rows, session } from "../state/measuring.ts";
import { allPlaced } from "../state/work.ts";
import { language, words } from "../words/words.ts";

export interface RowCells {
  readonly value: Signal<string>;
  readonly mean: Signal<string>;
  readonly sd: Signal<string>;
  readonly deviation: Signal<string>;
  readonly stars: Signal<string>;
  /** Why there is no value, or a verdict in place of one. */
  readonly note: Signal<string>;
}

export const cells = signal<readonly RowCells[]>([]);
/** Rows that can be seen; the words of others wait until they are. */
const seen = new Set<number>();
let stale = new Set<number>();

effect(() => {
  const made = rows.value.map(() => ({
    value: signal(""),
    mean: signal(""),
    sd: signal(""),
    deviation: signal(""),
    stars: signal(""),
    note: signal(""),
  }));
  seen.clear();
  cells.value = made;
});

function noteOf(text: RowText, state: number | undefined): string {
  const t = words.peek();
  if (state === RowState.text) return text.value;
  if (text.missing.length > 0) return t.missing(text.missing.join(" "));
  return text.reason;
}

function refresh(): void {
  const now = session.peek();
  const due = [...stale].filter((row) => seen.has(row));
  if (!now || due.length === 0) return;
  for (const row of due) stale.delete(row);
  batch(() => {
    for (const text of now.texts(language.peek(), due)) {
      const cell = cells.peek()[text.row];
      if (!cell) continue;
      const state = numbers.peek().state[text.row];
      const note = noteOf(text, state);
      cell.note.value = note; // in the place of the numbers
      cell.value.value = state === RowState.text ? "" : text.value;
      cell.mean.value = note ? "" : text.mean;
      cell.sd.value = note ? "" : text.sd;
      cell.deviation.value = text.deviation;
      cell.stars.value = text.stars;
    }
  });
}

function changedRows(now: RowNumbers, before: RowNumbers): number[] {
  const changed: number[] = [];
  for (let row = 0; row < now.value.length; ++row) {
    const isSame =
      Object.is(now.value[row], before.value[row]) &&
      Object.is(now.deviation[row], before.deviation[row]) &&
      Object.is(now.mean[row], before.mean[row]) &&
      now.state[row] === before.state[row];
    if (!isSame) changed.push(row);
  }
  return changed;
}

let before: { readonly numbers: RowNumbers; readonly facts: string; readonly shown: readonly RowCells[] } | null = null;

/** All that words depend on beside the numbers. */
function facts(): string {
  const { landmarks: _landmarks, user: _user, vertebrae: _vertebrae, outlines: _outlines, ...rest } = record.peek();
  return JSON.stringify([language.value, rest, allPlaced(record.peek()).map(([name]) => name)]);
}

effect(() => {
  const now = numbers.value;
  const known = facts();
  const shown = cells.value;
  untracked(() => {
    const isSameTable = before?.facts === known && before.shown === shown; // other cells are empty yet
    const changed = isSameTable && before ? changedRows(now, before.numbers) : shown.keys();
    for (const row of changed) stale.add(row);
    if (!isSameTable) stale = new Set(shown.keys());
    before = { numbers: now, facts: known, shown };
    refresh();
  });
});

/** Rows from `first` up to before `end` come into sight or leave it. */
export function setSeen(first: number, end: number, isSeen: boolean): void {
  for (let row = first; row < end; ++row) {
    if (isSeen) seen.add(row);
    else seen.delete(row);
  }
  if (isSeen) refresh();
}
