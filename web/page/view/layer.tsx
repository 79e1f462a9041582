import { useEffect, useRef } from "preact/hooks";
import { eachFrame } from "../state/frames.ts";
import { type Mark, damage, redraw } from "./marks.ts";
import { pixelRatio, viewSize } from "./stage.ts";

/** Draws in CSS pixels of the view. Signals that it reads make it draw again. */
export type Painter = (context: CanvasRenderingContext2D) => void;

/** The context of a sheet as large as the view, in CSS pixels, and whether it is empty since its size has changed. */
function fitSheet(sheet: HTMLCanvasElement, alpha: boolean): { context: CanvasRenderingContext2D; isNew: boolean } | null {
  const context = sheet.getContext("2d", { alpha });
  if (!context) return null;
  const ratio = pixelRatio.value;
  const width = Math.round(viewSize.value.width * ratio);
  const height = Math.round(viewSize.value.height * ratio);
  const isNew = sheet.width !== width || sheet.height !== height;
  if (isNew) {
    sheet.width = width;
    sheet.height = height;
  }
  context.setTransform(ratio, 0, 0, ratio, 0, 0);
  return { context, isNew };
}

/** An opaque sheet below the others, drawn apart from them: what moves does not make the film be drawn again. */
export function Ground({ name, paint }: { name: string; paint: Painter }) {
  const canvas = useRef<HTMLCanvasElement>(null);
  useEffect(
    () =>
      eachFrame(() => {
        const fit = canvas.current && fitSheet(canvas.current, false);
        if (!fit) return;
        fit.context.fillStyle = "#06090c";
        fit.context.fillRect(0, 0, viewSize.value.width, viewSize.value.height);
        paint(fit.context);
      }),
    [paint],
  );
  return <canvas ref={canvas} class={`layer layer-${name}`} aria-hidden="true" />;
}

/** A sheet of marks, of which those that stay are left alone. Signals that `marks` reads make it look for changes. */
export function MarkLayer({ name, marks }: { name: string; marks: () => Iterable<Mark> }) {
  const canvas = useRef<HTMLCanvasElement>(null);
  useEffect(() => {
    let before: readonly Mark[] = [];
    return eachFrame(() => {
      const sheet = canvas.current;
      const fit = sheet && fitSheet(sheet, true);
      if (!fit) return;
      const now = [...marks()];
      redraw(fit.context, now, damage(fit.isNew ? [] : before, now), pixelRatio.value);
      sheet.hidden = now.length === 0; // even an empty sheet takes time to be laid over the film
      before = now;
    });
  }, [marks]);
  return <canvas ref={canvas} class={`layer layer-${name}`} aria-hidden="true" hidden />;
}
