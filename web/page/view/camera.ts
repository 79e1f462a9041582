// Which part of the film is seen: a film pixel p stands at `zoom * p + (x, y)` in CSS pixels of the view.
import type { Point } from "../state/document.ts";
import type { Size } from "./orientation.ts";

export interface Camera {
  readonly zoom: number;
  readonly x: number;
  readonly y: number;
}

export function toScreen({ zoom, x, y }: Camera, [px, py]: Point): Point {
  return [zoom * px + x, zoom * py + y];
}

export function toFilm({ zoom, x, y }: Camera, [sx, sy]: Point): Point {
  return [(sx - x) / zoom, (sy - y) / zoom];
}

/** The whole film in the middle of the view. */
export function fitted(film: Size, view: Size, edge = 12): Camera {
  const zoom = Math.max(0.01, Math.min((view.width - 2 * edge) / film.width, (view.height - 2 * edge) / film.height));
  return { zoom, x: (view.width - zoom * film.width) / 2, y: (view.height - zoom * film.height) / 2 };
}

/** Enlarged about a place of the view. */
export function zoomed(camera: Camera, factor: number, [sx, sy]: Point): Camera {
  const zoom = Math.min(32, Math.max(0.02, camera.zoom * factor));
  const change = zoom / camera.zoom;
  return { zoom, x: sx - (sx - camera.x) * change, y: sy - (sy - camera.y) * change };
}

export function panned(camera: Camera, dx: number, dy: number): Camera {
  return { zoom: camera.zoom, x: camera.x + dx, y: camera.y + dy };
}

/** So that at least a part of the film stays in the view. */
export function kept(camera: Camera, film: Size, view: Size): Camera {
  const edge = 80;
  const within = (at: number, length: number, room: number): number =>
    Math.min(room - edge, Math.max(edge - camera.zoom * length, at));
  return { zoom: camera.zoom, x: within(camera.x, film.width, view.width), y: within(camera.y, film.height, view.height) };
}

/** Moved by as little as brings the point away from the view's edge. */
export function showing(camera: Camera, point: Point, view: Size): Camera {
  const edge = Math.min(60, view.width / 4, view.height / 4);
  const [sx, sy] = toScreen(camera, point);
  const shift = (at: number, room: number): number => Math.max(edge - at, 0) + Math.min(room - edge - at, 0);
  return panned(camera, shift(sx, view.width), shift(sy, view.height));
}
