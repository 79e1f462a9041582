// Colours and pens on the dark of a film. Dots are told apart by their form as well as by their colour.
import type { Tissue } from "../../engine/engine.js";
import type { Point } from "../state/document.ts";
import type { Box } from "./marks.ts";

export const ink = {
  landmark: "#ffd54a",
  chosen: "#ffffff",
  constructed: "#c9a6ff",
  suggestion: "#5ee6ff",
  ruler: "#ff9d5c",
  measured: "#ffe98a",
  construction: "#ffb07c",
  doubtful: "#ff6b5e",
  earlier: "#ff7ab8",
  dotted: "#ff9d5c",
  halo: "rgba(0, 0, 0, 0.75)",
} as const;

export const tissueInk: Record<Tissue, string> = { hard: "#8fd0ff", soft: "#9fe6b0", tooth: "#ffe3b8" };

export const labelFont = '600 11px system-ui, "Noto Sans CJK JP", sans-serif';

export function haloedText(context: CanvasRenderingContext2D, text: string, x: number, y: number, colour: string): void {
  context.lineJoin = "round";
  context.lineWidth = 3;
  context.strokeStyle = ink.halo;
  context.strokeText(text, x, y);
  context.fillStyle = colour;
  context.fillText(text, x, y);
}

/** A line that can be seen on dark and on light ground. */
export function haloedLine(context: CanvasRenderingContext2D, path: Path2D, colour: string, width: number): void {
  context.lineCap = "round";
  context.lineJoin = "round";
  context.strokeStyle = ink.halo;
  context.lineWidth = width + 2;
  context.stroke(path);
  context.strokeStyle = colour;
  context.lineWidth = width;
  context.stroke(path);
}

export function segmentPath(segments: Iterable<readonly [Point, Point]>): Path2D {
  const path = new Path2D();
  for (const [from, to] of segments) {
    path.moveTo(...from);
    path.lineTo(...to);
  }
  return path;
}

/** A cross with its middle left open, so that what is aimed at can be seen. */
export function crosshairPath([x, y]: Point, arm: number, gap: number): Path2D {
  return segmentPath([
    [[x - arm, y], [x - gap, y]],
    [[x + gap, y], [x + arm, y]],
    [[x, y - arm], [x, y - gap]],
    [[x, y + gap], [x, y + arm]],
  ]);
}

/** All that a text of the label font, begun there, can take. */
export function textBox(text: string, x: number, y: number): Box {
  return { left: x - 3, top: y - 14, right: x + 13 * text.length + 3, bottom: y + 6 };
}
