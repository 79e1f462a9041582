import { computed } from "@preact/signals";
import type { AverageFace, Outline, Point } from "../../engine/engine.js";
import { engine, kind } from "../state/desk.ts";

/** A uniform Catmull-Rom curve as the data of an SVG path. */
function curveData({ points, closed }: Outline): string {
  const count = points.length;
  const at = (index: number): Point => points[closed ? (index + count) % count : Math.min(count - 1, Math.max(0, index))]!;
  if (count === 0) return "";
  const text = (x: number, y: number): string => `${x.toFixed(1)} ${y.toFixed(1)}`;
  let data = `M${text(at(0).x, at(0).y)}`;
  for (let index = 0; index < (closed ? count : count - 1); ++index) {
    const [a, b, c, d] = [at(index - 1), at(index), at(index + 1), at(index + 2)];
    data += `C${text(b.x + (c.x - a.x) / 6, b.y + (c.y - a.y) / 6)} ${text(c.x - (d.x - b.x) / 6, c.y - (d.y - b.y) / 6)} ${text(c.x, c.y)}`;
  }
  return data;
}

interface Drawn {
  readonly face: AverageFace;
  readonly curves: readonly { readonly data: string; readonly tissue: string }[];
  readonly box: readonly [x: number, y: number, width: number, height: number];
}

const drawn = computed<Drawn | null>(() => {
  const face = engine.value?.averageFace(kind.value) ?? null;
  if (!face) return null;
  const points = face.outlines.flatMap((outline) => outline.points);
  const xs = points.map(({ x }) => x);
  const ys = points.map(({ y }) => y);
  const [left, top] = [Math.min(...xs), Math.min(...ys)];
  return {
    face,
    curves: face.outlines.map((outline) => ({ data: curveData(outline), tissue: outline.tissue })),
    box: [left - 20, top - 20, Math.max(...xs) - left + 40, Math.max(...ys) - top + 40],
  };
});

function Face({ drawn, box, at, dot }: { drawn: Drawn; box: readonly number[]; at: Point; dot: number }) {
  return (
    <svg class="atlas-face" viewBox={box.join(" ")}>
      {drawn.curves.map(({ data, tissue }, index) => (
        <path key={index} class={`atlas-${tissue}`} d={data} />
      ))}
      <circle class="atlas-dot" cx={at.x} cy={at.y} r={dot} />
    </svg>
  );
}

/** Where a landmark lies on the average face: on the whole of it, and close by. */
export function AtlasFace({ name, label }: { name: string; label: string }) {
  const shown = drawn.value;
  const at = shown?.face.landmarks.find((landmark) => landmark.name === name);
  if (!shown || !at) return null;
  const near = shown.box[3] * 0.24;
  return (
    <div class="atlas" role="img" aria-label={label}>
      <Face drawn={shown} box={shown.box} at={at} dot={shown.box[3] / 45} />
      <Face drawn={shown} box={[at.x - near / 2, at.y - near / 2, near, near]} at={at} dot={near / 32} />
    </div>
  );
}
