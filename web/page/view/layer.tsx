import { useEffect, useRef } from "preact/hooks";
import { eachFrame } from "../state/frames.ts";
import { pixelRatio, viewSize } from "./stage.ts";

/** Draws in CSS pixels of the view. Signals that it reads make it draw again. */
export type Painter = (context: CanvasRenderingContext2D) => void;

/** One sheet of the view, drawn apart from the others: what moves does not make the film be drawn again. */
export function Layer({ name, paint }: { name: string; paint: Painter }) {
  const canvas = useRef<HTMLCanvasElement>(null);
  useEffect(
    () =>
      eachFrame(() => {
        const sheet = canvas.current;
        const context = sheet?.getContext("2d");
        if (!sheet || !context) return;
        const ratio = pixelRatio.value;
        const width = Math.round(viewSize.value.width * ratio);
        const height = Math.round(viewSize.value.height * ratio);
        if (sheet.width !== width || sheet.height !== height) {
          sheet.width = width;
          sheet.height = height;
        }
        context.setTransform(1, 0, 0, 1, 0, 0);
        context.clearRect(0, 0, width, height);
        context.setTransform(ratio, 0, 0, ratio, 0, 0);
        paint(context);
      }),
    [paint],
  );
  return <canvas ref={canvas} class={`layer layer-${name}`} aria-hidden="true" />;
}
