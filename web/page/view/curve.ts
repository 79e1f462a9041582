// Outlines: smooth curves through all their points.
import type { Point } from "../state/document.ts";

/** A uniform Catmull-Rom curve as Bézier curves, in the words of an SVG path. */
export function curveText(points: readonly Point[], closed: boolean): string {
  const count = points.length;
  if (count === 0) return "";
  const point = (index: number): Point =>
    points[closed ? (index + count) % count : Math.min(count - 1, Math.max(0, index))]!;
  const steps = Array.from({ length: closed ? count : count - 1 }, (_, index) => {
    const [x0, y0] = point(index - 1);
    const [x1, y1] = point(index);
    const [x2, y2] = point(index + 1);
    const [x3, y3] = point(index + 2);
    return `C${x1 + (x2 - x0) / 6} ${y1 + (y2 - y0) / 6} ${x2 - (x3 - x1) / 6} ${y2 - (y3 - y1) / 6} ${x2} ${y2}`;
  });
  return `M${point(0).join(" ")}${steps.join("")}${closed ? "Z" : ""}`;
}
