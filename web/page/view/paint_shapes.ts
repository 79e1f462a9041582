// What a row of the results measures, on the film.
import type { Shape } from "../../engine/engine.js";
import { rows, numbers, session } from "../state/measuring.ts";
import { shownRow } from "../state/desk.ts";
import { toScreen } from "./camera.ts";
import { haloedLine, ink, segmentPath } from "./ink.ts";
import { camera } from "./stage.ts";

const measuring = new Set<Shape["kind"]>(["length", "length_right", "length_down", "angle", "line_angle"]);

export function paintShapes(context: CanvasRenderingContext2D): void {
  const row = shownRow.value;
  void numbers.value;
  if (row === null || row >= rows.value.length || !session.value) return;
  const now = camera.value;
  const at = ({ x, y }: { x: number; y: number }): [number, number] => toScreen(now, [x, y]);
  for (const shape of session.value.shapes(row)) {
    const measures = measuring.has(shape.kind);
    const colour = measures ? ink.measured : ink.construction;
    context.setLineDash(measures ? [] : [5, 4]);
    haloedLine(context, segmentPath(shape.segments.map(({ from, to }) => [at(from), at(to)] as const)), colour, measures ? 2 : 1.3);
    context.setLineDash([]);
    if (shape.arc) paintArc(context, at(shape.arc.at), shape.arc.from, shape.arc.to);
    for (const point of shape.points) {
      const [x, y] = at(point);
      context.beginPath();
      context.arc(x, y, 3, 0, 2 * Math.PI);
      context.fillStyle = colour;
      context.fill();
    }
  }
}

function paintArc(context: CanvasRenderingContext2D, [x, y]: [number, number], from: number, to: number): void {
  const turn = ((to - from) % (2 * Math.PI) + 3 * Math.PI) % (2 * Math.PI) - Math.PI; // the shorter way round
  const arc = new Path2D();
  arc.arc(x, y, 34, from, from + turn, turn < 0);
  const wedge = new Path2D(arc);
  wedge.lineTo(x, y);
  context.fillStyle = "rgba(255, 233, 138, 0.22)";
  context.fill(wedge);
  haloedLine(context, arc, ink.measured, 1.8);
}
