// Landmarks, the suggestion, the keyboard's cross and the ruler.
import { record, scaleOrigin, tool, view } from "../state/desk.ts";
import type { Point } from "../state/document.ts";
import { constructed, shownPoints } from "../state/measuring.ts";
import { allPlaced, positionOf } from "../state/work.ts";
import { draftRuler } from "../calibrate/draft.ts";
import { suggestion } from "../place/guide.ts";
import { toScreen } from "./camera.ts";
import { crosshairPath, haloedLine, haloedText, ink, labelFont, segmentPath } from "./ink.ts";
import { camera, dragged, hovered, keyboardCursor, pointer, touching } from "./stage.ts";

function dot(context: CanvasRenderingContext2D, [x, y]: Point, colour: string, radius: number): void {
  context.beginPath();
  context.arc(x, y, radius + 1.2, 0, 2 * Math.PI);
  context.fillStyle = ink.halo;
  context.fill();
  context.beginPath();
  context.arc(x, y, radius, 0, 2 * Math.PI);
  context.fillStyle = colour;
  context.fill();
}

function diamond(context: CanvasRenderingContext2D, [x, y]: Point, size: number): void {
  const path = new Path2D();
  path.moveTo(x, y - size);
  path.lineTo(x + size, y);
  path.lineTo(x, y + size);
  path.lineTo(x - size, y);
  path.closePath();
  haloedLine(context, path, ink.constructed, 1.4);
}

function ring(context: CanvasRenderingContext2D, [x, y]: Point, radius: number, colour: string, dashed = false): void {
  const path = new Path2D();
  path.arc(x, y, radius, 0, 2 * Math.PI);
  context.setLineDash(dashed ? [3, 3] : []);
  haloedLine(context, path, colour, 1.5);
  context.setLineDash([]);
}

/** Puts names beside their dots, where no other name stands yet. */
class Labels {
  private readonly taken: { readonly x: number; readonly y: number; readonly width: number }[] = [];

  constructor(private readonly context: CanvasRenderingContext2D) {}

  put(text: string, [x, y]: Point, colour: string): void {
    const width = 7 * text.length;
    const places: Point[] = [[x + 7, y - 6], [x + 7, y + 14], [x - 7 - width, y - 6], [x - 7 - width, y + 14]];
    const free = places.find(([left, top]) => this.taken.every((other) => !this.overlap(left, top, width, other))) ?? places[0]!;
    this.taken.push({ x: free[0], y: free[1], width });
    haloedText(this.context, text, free[0], free[1], colour);
  }

  private overlap(x: number, y: number, width: number, other: { x: number; y: number; width: number }): boolean {
    return x < other.x + other.width && other.x < x + width && Math.abs(y - other.y) < 11;
  }
}

function paintRuler(context: CanvasRenderingContext2D): void {
  const now = camera.value;
  const told = scaleOrigin.value;
  const drafting = tool.value === "calibrate";
  const ends = drafting ? draftRuler.value : told?.kind === "ruler" ? [told.ruler.from, told.ruler.to] : [];
  if (!drafting && !ends.length) return;
  const places = ends.map((end) => toScreen(now, end));
  const [from, to] = places;
  context.globalAlpha = drafting ? 1 : 0.45;
  if (from && to) haloedLine(context, segmentPath([[from, to]]), ink.ruler, 1.2);
  for (const place of places) haloedLine(context, crosshairPath(place, 9, 2.5), ink.ruler, 1.5);
  context.globalAlpha = 1;
}

export function paintLandmarks(context: CanvasRenderingContext2D): void {
  const now = camera.value;
  const { current, labels } = view.value;
  context.font = labelFont;
  const names = new Labels(context);
  paintRuler(context);

  for (const [name, at] of shownPoints.value) {
    const place = toScreen(now, at);
    diamond(context, place, 3);
    if (labels) names.put(name, place, ink.constructed);
  }
  for (const [name, at] of constructed.value) {
    const place = toScreen(now, at);
    diamond(context, place, 4);
    if (name === current) ring(context, place, 9, ink.chosen);
    if (labels || name === current || name === hovered.value) names.put(name, place, ink.constructed);
  }
  for (const [name, at] of allPlaced(record.value)) {
    const place = toScreen(now, at);
    const chosen = name === current || name === dragged.value;
    // A dragged point is a cross: a dot would hide the structure that it is brought to.
    if (name === dragged.value) haloedLine(context, crosshairPath(place, 10, 2.5), ink.chosen, 1.2);
    else dot(context, place, ink.landmark, name === hovered.value ? 3.6 : 2.6);
    if (chosen) ring(context, place, 9, ink.chosen);
    if (labels || chosen || name === hovered.value) names.put(name, place, chosen ? ink.chosen : ink.landmark);
  }

  if (tool.value !== "place" || current === null || positionOf(record.value, current)) return;
  const likely = suggestion.value;
  if (likely && !constructed.value.has(current)) {
    const place = toScreen(now, likely);
    ring(context, place, 11, ink.suggestion, true);
    haloedLine(context, crosshairPath(place, 6, 2), ink.suggestion, 1);
    names.put(`${current}?`, [place[0] + 6, place[1] - 5], ink.suggestion);
  }
  if (keyboardCursor.value) haloedLine(context, crosshairPath(toScreen(now, keyboardCursor.value), 14, 3), ink.chosen, 1.2);
  else if (pointer.value && touching.value) haloedLine(context, crosshairPath(toScreen(now, pointer.value), 18, 3), ink.chosen, 1.2);
}
