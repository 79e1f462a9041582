import { useEffect, useRef } from "preact/hooks";
import { computed } from "@preact/signals";
import { film, orientation, record, tool, view } from "../state/desk.ts";
import { eachFrame } from "../state/frames.ts";
import { allPlaced, positionOf } from "../state/work.ts";
import { draftRuler } from "../calibrate/draft.ts";
import { toScreen } from "./camera.ts";
import { crosshairPath, haloedLine, ink } from "./ink.ts";
import { drawFilm } from "./picture.ts";
import { camera, dragged, keyboardCursor, pixelRatio, pointer, viewSize } from "./stage.ts";

const side = 190;
const enlargement = 4;
const largestPixel = 12;

/** What the loupe looks at: only while something is being put in its place. */
const target = computed(() => {
  if (!film.value) return null;
  const { current } = view.value;
  const isOpen = current !== null && !positionOf(record.value, current);
  if (dragged.value !== null) return positionOf(record.value, dragged.value) ?? pointer.value;
  if (tool.value === "calibrate") return pointer.value ?? draftRuler.value.at(-1) ?? null;
  return isOpen && tool.value === "place" ? (keyboardCursor.value ?? pointer.value) : null;
});

/** In the corner that the pointer is not in. */
const onLeft = computed(() => {
  const at = target.value && toScreen(camera.value, target.value);
  return at !== null && at[0] > viewSize.value.width - side - 90 && at[1] < side + 90;
});

export function Loupe() {
  const canvas = useRef<HTMLCanvasElement>(null);
  useEffect(
    () =>
      eachFrame(() => {
        const glass = canvas.current;
        const context = glass?.getContext("2d");
        if (!glass || !context) return;
        const at = target.value;
        glass.hidden = at === null;
        glass.classList.toggle("on-left", onLeft.value);
        if (!at) return;
        const ratio = pixelRatio.value;
        if (glass.width !== side * ratio) glass.width = glass.height = side * ratio;
        context.setTransform(1, 0, 0, 1, 0, 0);
        context.fillStyle = "#000";
        context.fillRect(0, 0, glass.width, glass.height);
        context.setTransform(ratio, 0, 0, ratio, 0, 0);
        const zoom = Math.max(camera.value.zoom, Math.min(largestPixel, camera.value.zoom * enlargement));
        const glassCamera = { zoom, x: side / 2 - zoom * at[0], y: side / 2 - zoom * at[1] };
        drawFilm(context, orientation.value, glassCamera, { width: side, height: side }, ratio);
        for (const [name, place] of allPlaced(record.value)) {
          if (name === dragged.value) continue;
          const [x, y] = toScreen(glassCamera, place);
          if (x < -2 || y < -2 || x > side + 2 || y > side + 2) continue;
          context.fillStyle = ink.landmark;
          context.fillRect(x - 1.5, y - 1.5, 3, 3);
        }
        haloedLine(context, crosshairPath([side / 2, side / 2], side / 2, 6), "rgba(255, 255, 255, 0.85)", 0.8);
      }),
    [],
  );
  return <canvas ref={canvas} class="loupe" hidden aria-hidden="true" />;
}
