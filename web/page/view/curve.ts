// Outlines: smooth curves through all their points.
import type { Point } from "../state/document.ts";

/** A uniform Catmull-Rom curve as Bézier curves. */
export function curvePath(points: readonly Point[], closed: boolean): Path2D {
  const path = new Path2D();
  const count = points.length;
  if (count === 0) return path;
  const point = (index: number): Point =>
    points[closed ? (index + count) % count : Math.min(count - 1, Math.max(0, index))]!;
  path.moveTo(...point(0));
  for (let index = 0; index < (closed ? count : count - 1); ++index) {
    const [x0, y0] = point(index - 1);
    const [x1, y1] = point(index);
    const [x2, y2] = point(index + 1);
    const [x3, y3] = point(index + 2);
    path.bezierCurveTo(x1 + (x2 - x0) / 6, y1 + (y2 - y0) / 6, x2 - (x3 - x1) / 6, y2 - (y3 - y1) / 6, x2, y2);
  }
  if (closed) path.closePath();
  return path;
}
