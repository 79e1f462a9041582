import { expect, test } from "vitest";
import type { Film } from "../../page/film/film.ts";
import { strongestEdge } from "../../page/view/edges.ts";

/** 80 x 60 pixels, dark but for a light field from column 50 and a brighter one from row 40. */
function fields(kind: "grey" | "colour"): Film {
  const [width, height] = [80, 60];
  const grey = (at: number): number => (at % width >= 50 ? 90 : 30) + (at / width >= 40 ? 80 : 0);
  const samples =
    kind === "grey"
      ? Uint8Array.from({ length: width * height }, (_, at) => grey(at))
      : Uint8ClampedArray.from({ length: 4 * width * height }, (_, at) => (at % 4 === 3 ? 255 : grey(at >> 2)));
  return { kind, width, height, samples } as unknown as Film;
}

test.each(["grey", "colour"] as const)("the strongest edge within reach is found in %s films, none on even ground", (kind) => {
  const film = fields(kind);
  const [x] = strongestEdge(film, [45.3, 20.2], 8, 2)!;
  expect(Math.abs(x - 49.5)).toBeLessThanOrEqual(0.5);
  const [, y] = strongestEdge(film, [48, 36], 8, 2)!; // both are near, this one is stronger
  expect(Math.abs(y - 39.5)).toBeLessThanOrEqual(0.5);
  expect(strongestEdge(film, [20, 15], 8, 2)).toBeNull();
  expect(strongestEdge(film, [-3, 5], 8, 2)).toBeNull(); // beyond the film's edge there is none
});
