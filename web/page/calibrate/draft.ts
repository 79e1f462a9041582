// The ends on the ruler while a person is calibrating.
import { computed, signal } from "@preact/signals";
import { history, tool, work } from "../state/desk.ts";
import { panel } from "../parts/panel_choice.ts";
import type { Point, ScaleOrigin } from "../state/document.ts";
import { allPlaced, scaled } from "../state/work.ts";

/** None, one or two. */
export const draftRuler = signal<readonly Point[]>([]);
export const rulerLengthMm = signal(10);
export const rulerMagnification = signal(1);

/** null until both ends and a length are there. */
export const draftScale = computed<number | null>(() => {
  const [from, to] = draftRuler.value;
  if (!from || !to) return null;
  const pixels = Math.hypot(to[0] - from[0], to[1] - from[1]);
  const mm = rulerLengthMm.value / rulerMagnification.value / pixels;
  return Number.isFinite(mm) && mm > 0 ? mm : null;
});

export function beginCalibration(): void {
  const told = work.peek().scale;
  if (told?.kind === "ruler") {
    draftRuler.value = [told.ruler.from, told.ruler.to];
    rulerLengthMm.value = told.ruler.lengthMm;
    rulerMagnification.value = told.ruler.magnification;
  } else {
    draftRuler.value = [];
  }
  tool.value = "calibrate";
}

/** The next end of the ruler; with both there, the nearer one is put anew. */
export function putRulerEnd(at: Point): void {
  const [from, to] = draftRuler.peek();
  if (!from) draftRuler.value = [at];
  else if (!to) draftRuler.value = [from, at];
  else {
    const distance = (end: Point): number => Math.hypot(end[0] - at[0], end[1] - at[1]);
    draftRuler.value = distance(from) < distance(to) ? [at, to] : [from, at];
  }
}

export function endCalibration(): void {
  draftRuler.value = [];
  tool.value = "place";
}

export function acceptRuler(): void {
  const mm = draftScale.peek();
  const [from, to] = draftRuler.peek();
  if (mm === null || !from || !to) return;
  const ruler = { from, to, lengthMm: rulerLengthMm.peek(), magnification: rulerMagnification.peek() };
  takeScale(mm, { kind: "ruler", ruler });
  endCalibration();
}

/** With a scale, placing can begin. */
export function takeScale(mmPerPixel: number, origin: ScaleOrigin): void {
  history.change((now) => scaled(now, mmPerPixel, origin));
  if (allPlaced(work.peek().case).length === 0) panel.value = "landmarks";
}
