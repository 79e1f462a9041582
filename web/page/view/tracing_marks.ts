// The tracing: outlines, and the lines and values of the display modes that are shown; an earlier film's laid over it.
import type { Outline, Tracing } from "../../engine/engine.js";
import { view } from "../state/desk.ts";
import { type Camera, toScreen } from "./camera.ts";
import { curveText } from "./curve.ts";
import { haloedText, ink, labelFont, segmentPath, textBox, tissueInk } from "./ink.ts";
import { type Mark, boxAbout } from "./marks.ts";
import { camera } from "./stage.ts";
import { superimposed, tracings } from "./tracings.ts";

function outlineMark({ points, closed, fine, dotted }: Outline, colour: string, alpha: number, now: Camera): Mark {
  const places = points.map(({ x, y }) => toScreen(now, [x, y]));
  return {
    // To a tenth of a pixel: a fitted outline moves by less than can be seen when a landmark far from it is dragged.
    key: `outline ${colour} ${places.map(([x, y]) => `${Math.round(10 * x)} ${Math.round(10 * y)}`).join(" ")}`,
    // Smooth curves reach beyond their points, by a third of a step at the most.
    box: boxAbout(places, 2 + places.reduce((most, [x, y], index) => {
      const [beforeX, beforeY] = places[index === 0 ? places.length - 1 : index - 1]!;
      return index === 0 && !closed ? most : Math.max(most, Math.hypot(x - beforeX, y - beforeY) / 3);
    }, 0)),
    draw(context) {
      context.globalAlpha = alpha;
      context.lineJoin = "round";
      context.strokeStyle = colour;
      context.lineWidth = fine ? 0.9 : 1.5;
      context.setLineDash(dotted ? [1.5, 3] : []);
      context.stroke(new Path2D(curveText(places, closed)));
      context.setLineDash([]);
      context.globalAlpha = 1;
    },
  };
}

/** Modes are coloured for white paper; black and what is nearly so is drawn light here. */
function onDark(colour: string): string {
  const value = Number.parseInt(colour.slice(1), 16);
  const [red, green, blue] = [value >> 16, (value >> 8) & 255, value & 255];
  const light = 0.299 * red + 0.587 * green + 0.114 * blue;
  return light >= 110 ? colour : `color-mix(in srgb, ${colour} ${Math.round(35 + light / 4)}%, #eef2f6)`;
}

function* modeMarks(tracing: Tracing, now: Camera): Iterable<Mark> {
  for (const { from, to, colour, bold } of tracing.lines) {
    const ends = [toScreen(now, [from.x, from.y]), toScreen(now, [to.x, to.y])] as const;
    yield {
      key: `line ${colour} ${bold} ${ends.join(" ")}`,
      box: boxAbout(ends, 3),
      draw(context) {
        context.strokeStyle = onDark(colour);
        context.lineWidth = bold ? 1.8 : 1;
        context.stroke(segmentPath([ends]));
      },
    };
  }
  for (const { text, at, colour } of tracing.values) {
    const [x, y] = toScreen(now, [at.x, at.y]);
    yield {
      key: `value ${colour} ${x} ${y} ${text}`,
      box: textBox(text, x, y + 11),
      draw(context) {
        context.font = labelFont;
        haloedText(context, text, x, y + 11, onDark(colour));
      },
    };
  }
}

export function* tracingMarks(): Iterable<Mark> {
  const now = camera.value;
  for (const outline of superimposed.value?.outlines ?? [])
    if (!outline.dotted) yield outlineMark(outline, ink.earlier, 1, now);
  if (!view.value.tracing) return;
  const shown = tracings.value;
  for (const outline of shown[0]?.outlines ?? []) yield outlineMark(outline, outline.dotted ? ink.dotted : tissueInk[outline.tissue], 0.9, now);
  for (const tracing of shown) yield* modeMarks(tracing, now);
}
