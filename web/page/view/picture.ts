// The film in the greys in which it is seen.
import { computed, effect, signal } from "@preact/signals";
import { equalise } from "../film/equalise.ts";
import type { Film } from "../film/film.ts";
import { ShownFilm, type Region } from "../film/shown_film.ts";
import { type GreyView, defaultWindow } from "../film/window.ts";
import { film, view } from "../state/desk.ts";
import type { Orientation } from "../state/document.ts";
import { type Camera, toFilm } from "./camera.ts";
import type { Size } from "./orientation.ts";

const tone = computed(() => view.value.tone);
const isEven = computed(() => tone.value.clahe);

/** The film with even local contrast, once a worker has made it. */
const evened = signal<Film | null>(null);

effect(() => {
  const now = film.value;
  evened.value = null;
  if (!isEven.value || now?.kind !== "grey") return;
  let isWanted = true;
  void equalise(now).then((even) => isWanted && (evened.value = even));
  return () => {
    isWanted = false;
  };
});

const shown = computed<ShownFilm | null>(() => {
  const now = evened.value ?? film.value;
  return now && new ShownFilm(now);
});

const own = computed(() => (film.value?.kind === "grey" ? defaultWindow(film.value) : null));
const greyView = computed<GreyView>(() => {
  const { window, inverted, brightness, contrast } = tone.value;
  return { window: window ?? own.value, inverted, brightness, contrast };
});

/** From pixels of the file, whose corners have whole coordinates here, to those of the film as it is shown. */
export function turnMatrix({ mirrored, quarters }: Orientation, { width, height }: Size): DOMMatrix {
  const turned = {
    0: [1, 0, 0, 1, 0, 0],
    1: [0, 1, -1, 0, height, 0],
    2: [-1, 0, 0, -1, width, height],
    3: [0, -1, 1, 0, 0, width],
  }[quarters];
  const matrix = new DOMMatrix(turned);
  return mirrored ? matrix.multiply(new DOMMatrix([-1, 0, 0, 1, width, 0])) : matrix;
}

/** What of the file a view of this size shows. */
function regionIn(matrix: DOMMatrix, camera: Camera, view: Size): Region {
  const back = matrix.inverse();
  const corners = [[0, 0], [view.width, view.height]].map(([x, y]) => {
    const [filmX, filmY] = toFilm(camera, [x!, y!]);
    return back.transformPoint({ x: filmX + 0.5, y: filmY + 0.5 });
  });
  const xs = corners.map(({ x }) => x);
  const ys = corners.map(({ y }) => y);
  return { left: Math.min(...xs), right: Math.max(...xs), top: Math.min(...ys), bottom: Math.max(...ys) };
}

/**
 * Draws the film turned, where the camera has it, into a view of this size at the context's corner, which has `ratio`
 * pixels for each of the view. Landmarks count the middles of pixels as whole, drawing counts their corners.
 */
export function drawFilm(context: CanvasRenderingContext2D, orientation: Orientation, camera: Camera, view: Size, ratio: number): void {
  const now = shown.value;
  if (!now) return;
  const matrix = turnMatrix(orientation, now.film);
  context.save();
  context.transform(camera.zoom, 0, 0, camera.zoom, camera.x - camera.zoom / 2, camera.y - camera.zoom / 2);
  context.transform(matrix.a, matrix.b, matrix.c, matrix.d, matrix.e, matrix.f);
  context.imageSmoothingEnabled = camera.zoom * ratio < 4;
  context.imageSmoothingQuality = "high";
  now.draw(context, greyView.value, regionIn(matrix, camera, view), camera.zoom * ratio);
  context.restore();
}
