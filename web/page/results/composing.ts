// A sheet of one's own, of items of several analyses.
import { computed, signal } from "@preact/signals";
import type { Item } from "../../engine/engine.js";
import { download } from "../files/download.ts";
import { engine } from "../state/desk.ts";
import { rows } from "../state/measuring.ts";
import { sayError, sayNothing } from "../words/words.ts";

export const isComposing = signal(false);
const ticked = signal<ReadonlySet<Item>>(new Set());

export function isTicked(item: Item): boolean {
  return ticked.value.has(item);
}

export function tick(item: Item, isOn: boolean): void {
  ticked.value = new Set([...ticked.peek()].filter((other) => other !== item).concat(isOn ? [item] : []));
}

/** Those that the table shows, in its order. */
export const tickedRows = computed(() => rows.value.filter(({ item }) => ticked.value.has(item)));

export function saveComposed(title: string): void {
  sayNothing();
  try {
    const file = title.replace(/[\\/:*?"<>|\u0000-\u001f]/g, "_");
    download(engine.peek()!.compose(title, tickedRows.peek()), `${file}.txt`, "text/plain");
  } catch (error) {
    sayError(error);
  }
}
