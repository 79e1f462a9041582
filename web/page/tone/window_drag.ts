// The window of greys, set by dragging on the film: across for its width, down for its centre, as viewers of X-rays do.
import { defaultWindow, fullWindow } from "../film/window.ts";
import { film, history, view } from "../state/desk.ts";

export function windowDragged(dx: number, dy: number): void {
  const shown = film.peek();
  if (!shown || shown.kind !== "grey") return;
  const { tone } = view.peek();
  const { centre, width } = tone.window ?? defaultWindow(shown) ?? fullWindow(shown);
  history.look({
    tone: {
      ...tone,
      window: { centre: centre + (dy * width) / 400, width: Math.max(1, width * Math.exp(dx / 300)), shape: "linear_exact" },
    },
  });
}
