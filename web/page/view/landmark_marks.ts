// Landmarks, the suggestion, the keyboard's cross and the ruler.
import { record, scaleOrigin, tool, view } from "../state/desk.ts";
import type { Point } from "../state/document.ts";
import { constructed, shownPoints } from "../state/measuring.ts";
import { outlyingNames } from "../state/outliers.ts";
import { allPlaced, positionOf } from "../state/work.ts";
import { draftRuler } from "../calibrate/draft.ts";
import { suggestion } from "../place/guide.ts";
import { toScreen } from "./camera.ts";
import { crosshairPath, haloedLine, haloedText, ink, labelFont, segmentPath, textBox } from "./ink.ts";
import { type Mark, boxAbout } from "./marks.ts";
import { snapped, snaps } from "./snapping.ts";
import { camera, dragged, hovered, keyboardCursor, pointer, touching } from "./stage.ts";

/** Something about a place, no farther from it than `reach`. */
function mark(what: string, at: Point, reach: number, draw: Mark["draw"]): Mark {
  return { key: `${what} ${at[0]} ${at[1]}`, box: boxAbout([at], reach + 2), draw };
}

function dot(at: Point, colour: string, radius: number): Mark {
  const disc = (context: CanvasRenderingContext2D, size: number, fill: string): void => {
    context.beginPath();
    context.arc(at[0], at[1], size, 0, 2 * Math.PI);
    context.fillStyle = fill;
    context.fill();
  };
  return mark(`dot ${colour} ${radius}`, at, radius + 1.2, (context) => {
    disc(context, radius + 1.2, ink.halo);
    disc(context, radius, colour);
  });
}

function diamond(at: Point, size: number): Mark {
  return mark(`diamond ${size}`, at, size + 2, (context) => {
    const [x, y] = at;
    const path = new Path2D();
    path.moveTo(x, y - size);
    path.lineTo(x + size, y);
    path.lineTo(x, y + size);
    path.lineTo(x - size, y);
    path.closePath();
    haloedLine(context, path, ink.constructed, 1.4);
  });
}

function ring(at: Point, radius: number, colour: string, isDashed = false): Mark {
  return mark(`ring ${radius} ${colour}`, at, radius + 2, (context) => {
    const path = new Path2D();
    path.arc(at[0], at[1], radius, 0, 2 * Math.PI);
    context.setLineDash(isDashed ? [3, 3] : []);
    haloedLine(context, path, colour, 1.5);
    context.setLineDash([]);
  });
}

/** Of form, too, not of colour alone: a landmark that the others do not expect there. */
function triangle([x, y]: Point, size: number): Mark {
  return mark(`triangle ${size}`, [x, y], 2 * size, (context) => {
    const path = new Path2D();
    path.moveTo(x, y - 1.3 * size);
    path.lineTo(x + 1.2 * size, y + 0.8 * size);
    path.lineTo(x - 1.2 * size, y + 0.8 * size);
    path.closePath();
    haloedLine(context, path, ink.doubtful, 1.6);
  });
}

function cross(at: Point, arm: number, gap: number, colour: string, width: number, alpha = 1): Mark {
  return mark(`cross ${arm} ${colour} ${alpha}`, at, arm + 2, (context) => {
    context.globalAlpha = alpha;
    haloedLine(context, crosshairPath(at, arm, gap), colour, width);
    context.globalAlpha = 1;
  });
}

const nearPointer = 44; // CSS pixels

/** Puts names beside their dots, where no other name stands yet. One without room is left out until the pointer comes near. */
class Labels {
  private readonly taken: { readonly x: number; readonly y: number; readonly width: number }[] = [];
  private readonly pointer: Point | null;

  constructor(pointer: Point | null) {
    this.pointer = pointer;
  }

  *at(text: string, [x, y]: Point, colour: string, isWanted = false): Iterable<Mark> {
    const width = 7 * text.length;
    const places: Point[] = [[x + 7, y - 6], [x + 7, y + 14], [x - 7 - width, y - 6], [x - 7 - width, y + 14]];
    const free = places.find(([left, top]) => this.taken.every((other) => !this.overlap(left, top, width, other)));
    const isNear = this.pointer !== null && Math.hypot(this.pointer[0] - x, this.pointer[1] - y) < nearPointer;
    if (!free && !isWanted && !isNear) return;
    const [left, top] = free ?? places[0]!;
    this.taken.push({ x: left, y: top, width });
    yield {
      key: `label ${text} ${colour} ${left} ${top}`,
      box: textBox(text, left, top),
      draw(context) {
        context.font = labelFont;
        haloedText(context, text, left, top, colour);
      },
    };
  }

  private overlap(x: number, y: number, width: number, other: { x: number; y: number; width: number }): boolean {
    return x < other.x + other.width && other.x < x + width && Math.abs(y - other.y) < 11;
  }
}

function* rulerMarks(): Iterable<Mark> {
  const now = camera.value;
  const told = scaleOrigin.value;
  const drafting = tool.value === "calibrate";
  const ends = drafting ? draftRuler.value : told?.kind === "ruler" ? [told.ruler.from, told.ruler.to] : [];
  const places = ends.map((end) => toScreen(now, end));
  const [from, to] = places;
  const alpha = drafting ? 1 : 0.45;
  if (from && to) {
    yield {
      key: `ruler ${alpha} ${from.join(" ")} ${to.join(" ")}`,
      box: boxAbout([from, to], 4),
      draw(context) {
        context.globalAlpha = alpha;
        haloedLine(context, segmentPath([[from, to]]), ink.ruler, 1.2);
        context.globalAlpha = 1;
      },
    };
  }
  for (const place of places) yield cross(place, 9, 2.5, ink.ruler, 1.5, alpha);
}

export function* landmarkMarks(): Iterable<Mark> {
  const now = camera.value;
  const { current, labels } = view.value;
  // What is dragged comes by many names, which need not be read then.
  const names = new Labels(pointer.value && dragged.value === null ? toScreen(now, pointer.value) : null);
  const doubtful = outlyingNames.value;
  yield* rulerMarks();

  for (const [name, at] of shownPoints.value) {
    const place = toScreen(now, at);
    yield diamond(place, 3);
    if (labels) yield* names.at(name, place, ink.constructed);
  }
  for (const [name, at] of constructed.value) {
    const place = toScreen(now, at);
    yield diamond(place, 4);
    if (doubtful.has(name)) yield triangle(place, 11);
    if (name === current) yield ring(place, 9, ink.chosen);
    const isWanted = name === current || name === hovered.value;
    if (labels || isWanted) yield* names.at(name, place, ink.constructed, isWanted);
  }
  // The dragged one last, so that its name makes way for the others', which stay as they are.
  const held = dragged.value;
  const all = allPlaced(record.value);
  for (const [name, at] of [...all.filter(([name]) => name !== held), ...all.filter(([name]) => name === held)]) {
    const place = toScreen(now, at);
    const chosen = name === current || name === held;
    // A dragged point is a cross: a dot would hide the structure that it is brought to.
    if (name === held) yield cross(place, 10, 2.5, ink.chosen, 1.2);
    else yield dot(place, ink.landmark, name === hovered.value ? 3.6 : 2.6);
    if (doubtful.has(name)) yield triangle(place, 11);
    if (chosen) yield ring(place, 9, ink.chosen);
    const isWanted = chosen || name === hovered.value;
    if (labels || isWanted) yield* names.at(name, place, chosen ? ink.chosen : ink.landmark, isWanted);
  }

  if (tool.value !== "place" || current === null || positionOf(record.value, current)) return;
  const likely = suggestion.value;
  if (likely && !constructed.value.has(current)) {
    const place = toScreen(now, likely);
    yield ring(place, 11, ink.suggestion, true);
    yield cross(place, 6, 2, ink.suggestion, 1);
    yield* names.at(`${current}?`, [place[0] + 6, place[1] - 5], ink.suggestion, true);
  }
  if (keyboardCursor.value) yield cross(toScreen(now, keyboardCursor.value), 14, 3, ink.chosen, 1.2);
  else if (snaps.value && pointer.value) yield cross(toScreen(now, snapped(pointer.value)), 7, 2, ink.suggestion, 1.2);
  else if (pointer.value && touching.value) yield cross(toScreen(now, pointer.value), 18, 3, ink.chosen, 1.2);
}
