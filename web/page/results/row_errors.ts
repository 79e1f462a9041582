// The standard error beside each value. It is reckoned in the time that frames leave over, of rows that can be seen.
import { type Signal, batch, computed, effect, signal, untracked } from "@preact/signals";
import type { RowErrors } from "../../engine/engine.js";
import { remembered } from "../parts/remembered.ts";
import { inSpareTime } from "../state/frames.ts";
import { numbers, rows, session } from "../state/measuring.ts";
import { language } from "../words/words.ts";

export const errorChoice = remembered<"on" | "off">("errors", "on", (value) => value === "on" || value === "off");
export const showsErrors = computed(() => errorChoice.value === "on");

export interface RowError {
  /** "± 1.2"; "" where there is none. */
  readonly text: Signal<string>;
  /** The deviation may as well be none. */
  readonly isDoubtful: Signal<boolean>;
  /** What it is mostly owed to, or why it is not known. */
  readonly words: Signal<string>;
}

export const rowErrors = signal<readonly RowError[]>([]);
/** What "±" stands for, in the rows that were asked for last. */
export const errorRemarks = signal<readonly string[]>([]);
const seen = new Set<number>();
let stale = new Set<number>();

effect(() => {
  const made = rows.value.map(() => ({ text: signal(""), isDoubtful: signal(false), words: signal("") }));
  seen.clear();
  stale = new Set(made.keys());
  rowErrors.value = made;
});

/** "± 1.2", in parentheses where nobody measured all that it rests on; "" where it is not known. */
export function errorText({ text, assumed }: RowErrors["rows"][number]): string {
  if (text === "") return "";
  return assumed.length > 0 ? `(± ${text})` : `± ${text}`;
}

function refresh(): void {
  const now = session.peek();
  const due = [...stale].filter((row) => seen.has(row));
  if (!now || due.length === 0 || !showsErrors.peek()) return;
  for (const row of due) stale.delete(row);
  const { remarks, rows: found } = now.errors(language.peek(), due);
  const known = new Map(found.map((error) => [error.row, error]));
  batch(() => {
    if (remarks.length > 0) errorRemarks.value = [...new Set([...errorRemarks.peek(), ...remarks])];
    for (const row of due) {
      const [cell, error] = [rowErrors.peek()[row], known.get(row)];
      if (!cell) continue;
      cell.text.value = error ? errorText(error) : "";
      cell.isDoubtful.value = error?.isDoubtful ?? false;
      cell.words.value = error?.words.join("; ") ?? "";
    }
  });
}

const follow = inSpareTime(refresh);

function forget(): void {
  batch(() => {
    errorRemarks.value = [];
    for (const { text, isDoubtful, words } of rowErrors.peek()) {
      text.value = words.value = "";
      isDoubtful.value = false;
    }
  });
}

effect(() => {
  void language.value;
  void rows.value;
  errorRemarks.value = [];
});

effect(() => {
  void numbers.value;
  void language.value;
  const cells = rowErrors.value;
  const isOn = showsErrors.value;
  untracked(() => {
    stale = new Set(cells.keys());
    if (isOn) follow();
    else forget();
  });
});

/** Rows from `first` up to before `end` come into sight or leave it. */
export function setErrorsSeen(first: number, end: number, isSeen: boolean): void {
  for (let row = first; row < end; ++row) {
    if (isSeen) seen.add(row);
    else seen.delete(row);
  }
  if (isSeen) follow();
}
