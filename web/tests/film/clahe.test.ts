import { expect, test } from "vitest";
import { plainRule, pictureHeader } from "../../page/film/bytes.ts";
import { equalised } from "../../page/film/clahe.ts";
import type { GreyFilm } from "../../page/film/film.ts";

function film(width: number, height: number, sample: (x: number, y: number) => number): GreyFilm {
  const samples = Uint16Array.from({ length: width * height }, (_, i) => sample(i % width, Math.floor(i / width)));
  return { kind: "grey", width, height, bits: 12, samples, rule: plainRule, header: pictureHeader("PNG", "") };
}

function spread(samples: ArrayLike<number>): number {
  const mean = Array.from(samples).reduce((sum, sample) => sum + sample, 0) / samples.length;
  return Math.sqrt(Array.from(samples).reduce((sum, sample) => sum + (sample - mean) ** 2, 0) / samples.length);
}

// Faint texture in the dark, a bright half beside it.
const faint = film(160, 200, (x, y) => (x < 80 ? 300 : 3500) + ((x * 7 + y * 13) % 40));

test("local contrast grows, within the film's own range, and the film itself stays", () => {
  const before = Uint16Array.from(faint.samples);
  const even = equalised(faint);
  expect(faint.samples).toEqual(before);
  const part = (samples: ArrayLike<number>): number[] => Array.from({ length: 60 }, (_, i) => samples[100 * 160 + 5 + i] ?? 0);
  expect(spread(part(even.samples))).toBeGreaterThan(2 * spread(part(faint.samples)));
  expect(Math.min(...even.samples)).toBeGreaterThanOrEqual(300);
  expect(Math.max(...even.samples)).toBeLessThanOrEqual(3539);
});

test("lighter stays lighter at a place, and no tile's edge shows", () => {
  const slope = equalised(film(160, 160, (x) => 100 + x * 10));
  for (let x = 1; x < 160; ++x) expect(slope.samples[x] ?? 0).toBeGreaterThanOrEqual((slope.samples[x - 1] ?? 0) - 1);
  const steps = Array.from({ length: 159 }, (_, x) => (slope.samples[x + 1] ?? 0) - (slope.samples[x] ?? 0));
  expect(Math.max(...steps)).toBeLessThan(10 * 5);
});

test("a film of one grey is left as it is, however small", () => {
  for (const side of [1, 2, 9]) {
    const flat = film(side, side, () => 7);
    expect(equalised(flat)).toBe(flat);
    expect(equalised(film(side + 1, side, (x) => x)).samples.length).toBe((side + 1) * side);
  }
});
