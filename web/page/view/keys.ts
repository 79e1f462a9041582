// The film by keyboard alone.
import { acceptRuler, draftRuler, endCalibration, putRulerEnd } from "../calibrate/draft.ts";
import {
  chooseLandmark,
  placeLandmark,
  removeLandmark,
  roughPlace,
  skipLandmark,
  stepLandmark,
  suggestion,
  takeSuggestion,
} from "../place/guide.ts";
import { announcement, history, landmarkNames, record, tool, view } from "../state/desk.ts";
import type { Point } from "../state/document.ts";
import { constructed } from "../state/measuring.ts";
import { placed, positionOf } from "../state/work.ts";
import { words } from "../words/words.ts";
import { toggleSnapping } from "./snapping.ts";
import { bringIntoView, filmSize, fit, keyboardCursor, nudgeStep, zoomBy } from "./stage.ts";

const arrows: Readonly<Record<string, Point>> = {
  ArrowLeft: [-1, 0],
  ArrowRight: [1, 0],
  ArrowUp: [0, -1],
  ArrowDown: [0, 1],
};

/** A tenth of a millimetre, a millimetre with Shift, a centimetre with Ctrl. */
function stride(event: KeyboardEvent): number {
  return nudgeStep() * (event.ctrlKey || event.metaKey ? 100 : event.shiftKey ? 10 : 1);
}

function moveBy([dx, dy]: Point): void {
  const { current } = view.peek();
  const chosen = current === null ? undefined : (positionOf(record.peek(), current) ?? constructed.peek().get(current));
  if (tool.peek() === "place" && current !== null && chosen) {
    const at: Point = [chosen[0] + dx, chosen[1] + dy];
    history.preview((now) => placed(now, current, at, landmarkNames.peek()));
    bringIntoView(at);
    return;
  }
  const { width, height } = filmSize.peek();
  const from = keyboardCursor.peek() ?? (current === null || tool.peek() === "calibrate" ? null : (suggestion.peek() ?? roughPlace(current)));
  const at: Point = from ? [from[0] + dx, from[1] + dy] : [width / 2, height / 2];
  keyboardCursor.value = at;
  bringIntoView(at);
}

function put(): void {
  const cursor = keyboardCursor.peek();
  if (tool.peek() === "calibrate") {
    if (cursor) {
      putRulerEnd(cursor);
      announcement.value = words.peek().rulerEnds(draftRuler.peek().length);
      keyboardCursor.value = null;
    } else {
      acceptRuler();
    }
    return;
  }
  const { current } = view.peek();
  if (current === null) stepLandmark(1);
  else if (cursor) placeLandmark(current, cursor);
  else if (suggestion.peek()) takeSuggestion();
  else if (!positionOf(record.peek(), current)) keyboardCursor.value = roughPlace(current);
  else stepLandmark(1);
}

function escape(): void {
  if (keyboardCursor.peek()) keyboardCursor.value = null;
  else if (tool.peek() !== "place") endCalibration();
  else chooseLandmark(null);
}

const commands: Readonly<Record<string, () => void>> = {
  Enter: put,
  " ": put,
  PageDown: () => stepLandmark(1),
  n: () => stepLandmark(1),
  PageUp: () => stepLandmark(-1),
  p: () => stepLandmark(-1),
  s: skipLandmark,
  e: toggleSnapping,
  Delete: removeLandmark,
  Backspace: removeLandmark,
  "+": () => zoomBy(1.25),
  "=": () => zoomBy(1.25),
  "-": () => zoomBy(0.8),
  "0": fit,
  Escape: escape,
};

export function filmKeyDown(event: KeyboardEvent): void {
  const arrow = arrows[event.key];
  if (arrow) {
    const step = stride(event);
    moveBy([arrow[0] * step, arrow[1] * step]);
  } else {
    const command = commands[event.key];
    if (!command || event.ctrlKey || event.metaKey || event.altKey) return;
    command();
  }
  event.preventDefault();
}

/** As long as an arrow key is held it is one step for undo. */
export function filmKeyUp(event: KeyboardEvent): void {
  if (arrows[event.key]) history.commit();
}
