// The earlier film's tracing laid over this one's, as a drawing in millimetres.
import type { Outline, SvgPage } from "../../engine/engine.js";
import { earlier, superimposed } from "../view/tracings.ts";
import { record, scale } from "../state/desk.ts";
import { session } from "../state/measuring.ts";
import { curveText } from "../view/curve.ts";

const edgeMm = 6;

interface Pen {
  readonly colour: string;
  readonly dash: string;
}

const now: Pen = { colour: "#111", dash: "" };
const before: Pen = { colour: "#b5206b", dash: "1.6 0.9" };

/** Dashed, since prints are copied without colours. */
function drawn(outlines: readonly Outline[], pen: Pen, mm: number): string {
  return outlines
    .filter(({ dotted }) => !dotted)
    .map(({ points, closed, fine }) => {
      const path = curveText(points.map(({ x, y }) => [x * mm, y * mm]), closed);
      return `<path d="${path}" stroke="${pen.colour}" stroke-width="${fine ? 0.2 : 0.35}" stroke-dasharray="${pen.dash}"/>`;
    })
    .join("");
}

/** null without an earlier film, a scale or outlines. */
export function superimposedDrawing(): SvgPage | null {
  const [of, over, mm] = [session.value, superimposed.value, scale.value];
  if (!of || !over || !mm || !earlier.value) return null;
  const outlines = of.tracing({ mode: null, outlines: "case" }).outlines;
  const points = [...outlines, ...over.outlines].flatMap((outline) => outline.points);
  if (points.length === 0) return null;
  const [xs, ys] = [points.map(({ x }) => x * mm), points.map(({ y }) => y * mm)];
  const [left, top] = [Math.min(...xs) - edgeMm, Math.min(...ys) - edgeMm];
  const [widthMm, heightMm] = [Math.max(...xs) + edgeMm - left, Math.max(...ys) + edgeMm - top];
  const dots = Object.values(record.value.landmarks).map(([x, y]) => `<circle cx="${x * mm}" cy="${y * mm}" r="0.5" fill="${now.colour}"/>`);
  const svg =
    `<svg xmlns="http://www.w3.org/2000/svg" viewBox="${left} ${top} ${widthMm} ${heightMm}" fill="none" stroke-linecap="round">` +
    `${drawn(over.outlines, before, mm)}${drawn(outlines, now, mm)}${dots.join("")}</svg>`;
  return { svg, widthMm, heightMm };
}
