// The view of the film: its size, what part is seen, and where the pointer is.
import { computed, signal } from "@preact/signals";
import { film, orientation, record } from "../state/desk.ts";
import type { Point } from "../state/document.ts";
import { type Camera, fitted, kept, showing, zoomed } from "./camera.ts";
import { type Size, sizeAs } from "./orientation.ts";

/** In CSS pixels. */
export const viewSize = signal<Size>({ width: 800, height: 600 });
export const pixelRatio = signal(1);

const whereNothingIs: Size = { width: 1600, height: 2000 };

/** Of the film as it is shown; without one, room for what was placed. */
export const filmSize = computed<Size>(() => {
  const shown = film.value;
  if (shown) return sizeAs(orientation.value, shown);
  const points = Object.values(record.value.landmarks);
  if (points.length === 0) return whereNothingIs;
  const room = (coordinates: number[]): number => Math.ceil((Math.max(...coordinates) * 1.15) / 200) * 200;
  return { width: room(points.map(([x]) => x)), height: room(points.map(([, y]) => y)) };
});

/** null: the whole film, also when the window changes. */
const chosenCamera = signal<Camera | null>(null);
export const camera = computed<Camera>(() => chosenCamera.value ?? fitted(filmSize.value, viewSize.value));

/** In film pixels, under the mouse, above the finger or moved by keys; null: nowhere. */
export const pointer = signal<Point | null>(null);
/** The place that the keyboard has moved to; a mouse takes it away. */
export const keyboardCursor = signal<Point | null>(null);
/** The landmark that is being dragged. */
export const dragged = signal<string | null>(null);
export const hovered = signal<string | null>(null);

/** So that keys go to the film. */
export function focusFilm(): void {
  document.getElementById("film")?.focus({ preventScroll: true });
}

/** For a click by mouse or finger: whoever came by keyboard stays where he is. */
export function focusFilmAfter(event: MouseEvent): void {
  if (event.detail > 0) focusFilm();
}

export function fit(): void {
  chosenCamera.value = null;
}

export function moveCamera(next: Camera): void {
  chosenCamera.value = kept(next, filmSize.peek(), viewSize.peek());
}

export function zoomBy(factor: number, about?: Point): void {
  const { width, height } = viewSize.peek();
  moveCamera(zoomed(camera.peek(), factor, about ?? [width / 2, height / 2]));
}

/** Film pixels to a tenth of a millimetre; to half a pixel where the scale is not known. */
export function nudgeStep(): number {
  const scale = record.peek().mm_per_pixel;
  return scale ? 0.1 / scale : 0.5;
}

export function bringIntoView(point: Point): void {
  const next = showing(camera.peek(), point, viewSize.peek());
  if (next.x !== camera.peek().x || next.y !== camera.peek().y) moveCamera(next);
}
/** A finger is on the film: the point that it means lies above it and is drawn. */
export const touching = signal(false);
