// Which landmark is asked for, and where it is likely to be.
import { batch, computed } from "@preact/signals";
import { announcement, engine, history, kind, landmarkInfo, landmarkNames, record, view, work } from "../state/desk.ts";
import type { Point, Work } from "../state/document.ts";
import { asked, constructed, constructedNames, neededLandmarks } from "../state/measuring.ts";
import { placed, positionOf, removed, skipped } from "../state/work.ts";
import { bringIntoView, filmSize, keyboardCursor } from "../view/stage.ts";
import { words } from "../words/words.ts";

/** What a person has to place for the chosen analyses, in the order of placing; what is constructed is not asked for. */
export const askedLandmarks = computed<readonly string[]>(() => {
  const order = new Set<string>();
  for (const name of neededLandmarks.value) {
    const construction = landmarkInfo(name)?.construction;
    if (!construction || construction.optional) order.add(name);
    else for (const from of construction.from) order.add(from);
  }
  return [...order].filter((name) => {
    const construction = landmarkInfo(name)?.construction;
    return !construction || (construction.optional && !constructedNames.value.has(name));
  });
});

export const placedCount = computed(() => askedLandmarks.value.filter((name) => positionOf(record.value, name)).length);

function isOpen(name: string, now: Work): boolean {
  return !positionOf(now.case, name) && !now.skipped.includes(name);
}

/** The next one that is open behind `after`, else the first one; null when all are done. */
function nextOpen(after: string | null): string | null {
  const order = askedLandmarks.peek();
  const start = after === null ? 0 : order.indexOf(after) + 1;
  return [...order.slice(start), ...order.slice(0, start)].find((name) => isOpen(name, work.peek())) ?? null;
}

export function chooseLandmark(name: string | null): void {
  batch(() => {
    keyboardCursor.value = null;
    history.look({ current: name });
    const at = name === null ? undefined : positionOf(record.peek(), name);
    if (at) bringIntoView(at);
  });
}

/** Asks for the first open one where none is asked for. */
export function beginGuide(): void {
  if (view.peek().current === null) chooseLandmark(nextOpen(null));
}

export function placeLandmark(name: string, at: Point): void {
  batch(() => {
    history.change((now) => placed(now, name, at, landmarkNames.peek()));
    announcement.value = words.peek().placedAt(name, at[0], at[1]);
    chooseLandmark(nextOpen(name));
  });
}

export function skipLandmark(): void {
  const name = view.peek().current;
  if (name === null) return;
  batch(() => {
    if (!positionOf(record.peek(), name)) history.change((now) => skipped(now, name));
    chooseLandmark(nextOpen(name));
  });
}

/** The one before in the order, whether it is placed or not. */
export function stepLandmark(by: 1 | -1): void {
  const order = askedLandmarks.peek();
  if (order.length === 0) return;
  const current = view.peek().current;
  const at = current === null ? (by > 0 ? -1 : order.length) : order.indexOf(current);
  chooseLandmark(order[Math.min(order.length - 1, Math.max(0, at + by))] ?? null);
}

export function removeLandmark(): void {
  const name = view.peek().current;
  if (name === null || !positionOf(record.peek(), name)) return;
  history.change((now) => removed(now, name));
  announcement.value = words.peek().removed(name);
}

const suggestedPoint = asked((session) => {
  const name = view.value.current;
  if (name === null || positionOf(record.value, name)) return null;
  const at = session.suggest(name);
  return at ? ([at.x, at.y] as Point) : null;
}, null);

/** Where the landmark that is asked for is likely, once three are placed. */
export const suggestion = computed<Point | null>(() => constructed.value.get(view.value.current ?? "") ?? suggestedPoint.value);

/** Where the average face, put into the middle of the film, has it: for the keyboard to begin from. */
export function roughPlace(name: string): Point {
  const { width, height } = filmSize.peek();
  const face = engine.peek()?.averageFace(kind.peek());
  const at = face?.landmarks.find((landmark) => landmark.name === name);
  if (!face || !at) return [width / 2, height / 2];
  const xs = face.landmarks.map(({ x }) => x);
  const ys = face.landmarks.map(({ y }) => y);
  const [left, right, top, bottom] = [Math.min(...xs), Math.max(...xs), Math.min(...ys), Math.max(...ys)];
  const size = Math.min((0.7 * width) / (right - left), (0.7 * height) / (bottom - top));
  return [width / 2 + size * (at.x - (left + right) / 2), height / 2 + size * (at.y - (top + bottom) / 2)];
}

export function takeSuggestion(): void {
  const name = view.peek().current;
  const at = keyboardCursor.peek() ?? suggestion.peek();
  if (name !== null && at && !positionOf(record.peek(), name)) placeLandmark(name, at);
}
