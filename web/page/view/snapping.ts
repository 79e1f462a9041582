// Snapping to edges, for whoever asks for it.
import { signal } from "@preact/signals";
import { announcement, film, orientation } from "../state/desk.ts";
import type { Point } from "../state/document.ts";
import { words } from "../words/words.ts";
import { strongestEdge } from "./edges.ts";
import { turnMatrix } from "./picture.ts";
import { camera } from "./stage.ts";

export const snaps = signal(false);

const reachOnScreen = 10; // CSS pixels

export function toggleSnapping(): void {
  snaps.value = !snaps.peek();
  announcement.value = snaps.peek() ? words.peek().snaps : words.peek().snapsNot;
}

/** The strongest edge near a place of the film as it is shown; the place itself where snapping is off. */
export function snapped(at: Point): Point {
  const now = film.peek();
  if (!snaps.value || !now) return at;
  const pixels = 1 / camera.peek().zoom; // of the film in one of the screen
  const matrix = turnMatrix(orientation.peek(), now);
  // Drawing counts the corners of pixels, landmarks their middles.
  const stored = matrix.inverse().transformPoint({ x: at[0] + 0.5, y: at[1] + 0.5 });
  const edge = strongestEdge(now, [stored.x - 0.5, stored.y - 0.5], Math.min(60, Math.max(3, reachOnScreen * pixels)), Math.min(6, Math.max(1, Math.round(pixels))));
  if (!edge) return at;
  const { x, y } = matrix.transformPoint({ x: edge[0] + 0.5, y: edge[1] + 0.5 });
  return [x - 0.5, y - 0.5];
}
