// The standard error beside each value. It is reckoned in the time that frames leave over, of rows that can be seen.
import { type Signal, batch, computed, effect, signal, untracked } from "@preact/signals";
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
/** What "±" stands for. */
export const errorRemark = signal("");
const seen = new Set<number>();
let stale = new Set<number>();

effect(() => {
  const made = rows.value.map(() => ({ text: signal(""), isDoubtful: signal(false), words: signal("") }));
  seen.clear();
  stale = new Set(made.keys());
  rowErrors.value = made;
});

function refresh(): void {
  const now = session.peek();
  const due = [...stale].filter((row) => seen.has(row));
  if (!now || due.length === 0 || !showsErrors.peek()) return;
  for (const row of due) stale.delete(row);
  const { remark, rows: found } = now.errors(language.peek(), due);
  const known = new Map(found.map((error) => [error.row, error]));
  batch(() => {
    errorRemark.value = remark ?? "";
    for (const row of due) {
      const [cell, error] = [rowErrors.peek()[row], known.get(row)];
      if (!cell) continue;
      cell.text.value = error?.text ? `± ${error.text}` : "";
      cell.isDoubtful.value = error?.isDoubtful ?? false;
      cell.words.value = error?.words.join("; ") ?? "";
    }
  });
}

const follow = inSpareTime(refresh);

function forget(): void {
  batch(() => {
    errorRemark.value = "";
    for (const { text, isDoubtful, words } of rowErrors.peek()) {
      text.value = words.value = "";
      isDoubtful.value = false;
    }
  });
}

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
