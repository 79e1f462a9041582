// The edges of a film: where its greys change most.
import type { Film } from "../film/film.ts";
import type { Point } from "../state/document.ts";

/** Sums of all samples above and left of each place of a square, so that the sum of any box takes four looks. */
function sums(film: Film, left: number, top: number, side: number): Float64Array {
  const { width, height, samples } = film;
  const [step, channel] = film.kind === "grey" ? [1, 0] : [4, 1];
  const all = new Float64Array((side + 1) * (side + 1));
  for (let y = 0; y < side; ++y) {
    const row = Math.min(height - 1, Math.max(0, top + y)) * width;
    let sum = 0;
    for (let x = 0; x < side; ++x) {
      const column = Math.min(width - 1, Math.max(0, left + x));
      sum += samples[step * (row + column) + channel] ?? 0;
      all[(y + 1) * (side + 1) + x + 1] = sum + all[y * (side + 1) + x + 1]!;
    }
  }
  return all;
}

/**
 * Where within `reach` of the place, in stored pixels, the means of boxes of `grain` pixels on both sides differ most;
 * what is far away counts less. null on an even ground.
 */
export function strongestEdge(film: Film, [x, y]: Point, reach: number, grain: number): Point | null {
  const [middleX, middleY] = [Math.round(x), Math.round(y)];
  const half = Math.ceil(reach) + grain;
  const side = 2 * half + 1;
  const table = sums(film, middleX - half, middleY - half, side);
  const box = (left: number, top: number, right: number, bottom: number): number => {
    const at = (column: number, row: number): number => table[(row + half) * (side + 1) + column + half]!;
    return at(right + 1, bottom + 1) - at(left, bottom + 1) - at(right + 1, top) + at(left, top);
  };
  let found: Point | null = null;
  let most = 1e-9;
  for (let dy = -Math.floor(reach); dy <= reach; ++dy) {
    for (let dx = -Math.floor(reach); dx <= reach; ++dx) {
      const far = Math.hypot(dx, dy) / reach;
      if (far > 1) continue;
      const across = box(dx + 1, dy - grain, dx + grain, dy + grain) - box(dx - grain, dy - grain, dx - 1, dy + grain);
      const down = box(dx - grain, dy + 1, dx + grain, dy + grain) - box(dx - grain, dy - grain, dx + grain, dy - 1);
      const strength = Math.hypot(across, down) * (1 - far * far / 2);
      if (strength > most) {
        most = strength;
        found = [middleX + dx, middleY + dy];
      }
    }
  }
  return found;
}
