// @ts-check
// Where an angle's arc is drawn.

/** @import { Point, Shape } from "./engine.js" */

/**
 * Where the lines a-b and c-d meet; null for parallel ones.
 * @param {Point} a @param {Point} b @param {Point} c @param {Point} d
 */
function crossing(a, b, c, d) {
  const ab = { x: b.x - a.x, y: b.y - a.y };
  const cd = { x: d.x - c.x, y: d.y - c.y };
  const across = ab.x * cd.y - ab.y * cd.x;
  if (across === 0) return null;
  const along = ((c.x - a.x) * cd.y - (c.y - a.y) * cd.x) / across;
  return { x: a.x + along * ab.x, y: a.y + along * ab.y };
}

/** @param {Point} from @param {Point} to */
const direction = (from, to) => Math.atan2(to.y - from.y, to.x - from.x);

/**
 * @param {Pick<Shape, "kind" | "points">} shape
 * @returns {Shape["arc"]}
 */
export function arcOf({ kind, points }) {
  const [a, b, c, d] = points;
  if (kind === "angle" && a && b && c) return { at: b, from: direction(b, a), to: direction(b, c) };
  if (kind !== "line_angle" || !a || !b || !c || !d) return null;
  const at = crossing(a, b, c, d);
  return at && { at, from: direction(a, b), to: direction(c, d) };
}
