// The tracing: outlines, and the lines and values of the display modes that are shown; an earlier film's laid over it.
import type { Tracing } from "../../engine/engine.js";
import { view } from "../state/desk.ts";
import { toScreen } from "./camera.ts";
import { curvePath } from "./curve.ts";
import { haloedText, ink, labelFont, segmentPath, tissueInk } from "./ink.ts";
import { camera } from "./stage.ts";
import { superimposed, tracings } from "./tracings.ts";

function paintOutlines(context: CanvasRenderingContext2D, tracing: Tracing, colour: string | null): void {
  const now = camera.value;
  context.lineJoin = "round";
  for (const outline of tracing.outlines) {
    if (outline.dotted && colour) continue;
    context.strokeStyle = colour ?? (outline.dotted ? ink.dotted : tissueInk[outline.tissue]);
    context.setLineDash(outline.dotted ? [1.5, 3] : []);
    context.lineWidth = outline.fine ? 0.9 : 1.5;
    context.stroke(curvePath(outline.points, outline.closed, ({ x, y }) => toScreen(now, [x, y])));
  }
  context.setLineDash([]);
}

/** Modes are coloured for white paper; black and what is nearly so is drawn light here. */
function onDark(colour: string): string {
  const value = Number.parseInt(colour.slice(1), 16);
  const [red, green, blue] = [value >> 16, (value >> 8) & 255, value & 255];
  const light = 0.299 * red + 0.587 * green + 0.114 * blue;
  return light >= 110 ? colour : `color-mix(in srgb, ${colour} ${Math.round(35 + light / 4)}%, #eef2f6)`;
}

function paintMode(context: CanvasRenderingContext2D, tracing: Tracing): void {
  const now = camera.value;
  for (const line of tracing.lines) {
    context.strokeStyle = onDark(line.colour);
    context.lineWidth = line.bold ? 1.8 : 1;
    context.stroke(segmentPath([[toScreen(now, [line.from.x, line.from.y]), toScreen(now, [line.to.x, line.to.y])]]));
  }
  context.font = labelFont;
  for (const value of tracing.values) {
    const [x, y] = toScreen(now, [value.at.x, value.at.y]);
    haloedText(context, value.text, x, y + 11, onDark(value.colour));
  }
}

export function paintTracing(context: CanvasRenderingContext2D): void {
  const earlier = superimposed.value;
  if (earlier) paintOutlines(context, earlier, ink.earlier);
  if (!view.value.tracing) return;
  const shown = tracings.value;
  context.globalAlpha = 0.9;
  if (shown[0]) paintOutlines(context, shown[0], null);
  for (const tracing of shown) paintMode(context, tracing);
  context.globalAlpha = 1;
}
