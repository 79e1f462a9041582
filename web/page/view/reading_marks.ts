// How far the landmarks of two readings of the film lie from each other.
import { readingScatter } from "../readings/comparison.ts";
import { toScreen } from "./camera.ts";
import { haloedLine, ink, segmentPath } from "./ink.ts";
import { type Mark, boxAbout } from "./marks.ts";
import { camera } from "./stage.ts";

export function* readingMarks(): Iterable<Mark> {
  const now = camera.value;
  for (const [other, here] of readingScatter.value) {
    const [from, to] = [toScreen(now, other), toScreen(now, here)];
    yield {
      key: `reading ${from.join(" ")} ${to.join(" ")}`,
      box: boxAbout([from, to], 8),
      draw(context) {
        const path = segmentPath([[from, to]]);
        path.moveTo(from[0] + 4.5, from[1]);
        path.arc(from[0], from[1], 4.5, 0, 2 * Math.PI);
        haloedLine(context, path, ink.earlier, 1.4);
      },
    };
  }
}
