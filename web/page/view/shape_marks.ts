// What a row of the results measures, on the film.
import type { Shape } from "../../engine/engine.js";
import { rows, numbers, session } from "../state/measuring.ts";
import { shownRow } from "../state/desk.ts";
import { type Camera, toScreen } from "./camera.ts";
import { haloedLine, ink, segmentPath } from "./ink.ts";
import { type Mark, boxAbout } from "./marks.ts";
import { camera } from "./stage.ts";

const measuring = new Set<Shape["kind"]>(["length", "length_right", "length_down", "angle", "line_angle"]);
const arcRadius = 34;

function shapeMark(shape: Shape, now: Camera): Mark {
  const at = ({ x, y }: { x: number; y: number }): [number, number] => toScreen(now, [x, y]);
  const measures = measuring.has(shape.kind);
  const colour = measures ? ink.measured : ink.construction;
  const segments = shape.segments.map(({ from, to }) => [at(from), at(to)] as const);
  const points = shape.points.map(at);
  const { arc } = shape;
  const vertex = arc && at(arc.at);
  return {
    key: JSON.stringify([segments, points, vertex, shape.kind]),
    box: boxAbout([...segments.flat(), ...points, ...(vertex ? [vertex] : [])], arcRadius + 4),
    draw(context) {
      context.setLineDash(measures ? [] : [5, 4]);
      haloedLine(context, segmentPath(segments), colour, measures ? 2 : 1.3);
      context.setLineDash([]);
      if (arc && vertex) drawArc(context, vertex, arc.from, arc.to);
      for (const [x, y] of points) {
        context.beginPath();
        context.arc(x, y, 3, 0, 2 * Math.PI);
        context.fillStyle = colour;
        context.fill();
      }
    },
  };
}

function drawArc(context: CanvasRenderingContext2D, [x, y]: readonly [number, number], from: number, to: number): void {
  const turn = ((to - from) % (2 * Math.PI) + 3 * Math.PI) % (2 * Math.PI) - Math.PI; // the shorter way round
  const arc = new Path2D();
  arc.arc(x, y, arcRadius, from, from + turn, turn < 0);
  const wedge = new Path2D(arc);
  wedge.lineTo(x, y);
  context.fillStyle = "rgba(255, 233, 138, 0.22)";
  context.fill(wedge);
  haloedLine(context, arc, ink.measured, 1.8);
}

export function shapeMarks(): Mark[] {
  const row = shownRow.value;
  if (row === null || row >= rows.value.length || !session.value) return [];
  void numbers.value;
  const now = camera.value;
  return session.value.shapes(row).map((shape) => shapeMark(shape, now));
}
