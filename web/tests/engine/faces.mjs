// The samples, and random faces made of them.
import { readFileSync } from "node:fs";

const samples = new URL("../../../examples/samples/", import.meta.url);

export const sample = (name) => JSON.parse(readFileSync(new URL(name, samples), "utf8"));
export const sampleBytes = (name) => new Uint8Array(readFileSync(new URL(name, samples)));
export const sampleNames = [
  "lateral-average.json",
  "lateral-class2.json",
  "lateral-openbite.json",
  "frontal-average.json",
  "model-average.json",
];

/** Numbers from 0 to 1, always the same ones: mulberry32. */
function generator(seed) {
  return () => {
    seed = (seed + 0x6d2b79f5) | 0;
    let mixed = Math.imul(seed ^ (seed >>> 15), 1 | seed);
    mixed = (mixed + Math.imul(mixed ^ (mixed >>> 7), 61 | mixed)) ^ mixed;
    return ((mixed ^ (mixed >>> 14)) >>> 0) / 2 ** 32;
  };
}

/** Faces of all ages, some with fractions of pixels, some with landmarks missing, some without sex or dates. */
export function randomFaces(count, seed) {
  const random = generator(seed);
  const pick = (list) => list[Math.floor(random() * list.length)];
  return Array.from({ length: count }, () => {
    const { outlines, image, name, ...face } = sample(pick(sampleNames));
    const spread = pick([2, 20, 200]);
    const whole = random() < 0.5;
    const missing = pick([0, 0, 0.05, 0.4]);
    const moved = (value) => {
      const to = value + spread * (random() - 0.5);
      return whole ? Math.round(to) : Math.round(to * 1000) / 1000;
    };
    face.landmarks = Object.fromEntries(
      Object.entries(face.landmarks)
        .filter(() => random() >= missing)
        .map(([landmark, [x, y]]) => [landmark, [moved(x), moved(y)]]),
    );
    face.mm_per_pixel = pick([0.1, 0.0846, 0.25, 0.1444]);
    face.sex = pick(["male", "female", undefined]);
    face.birth = pick(["1960-02-29", "2012-07-01", "2018-12-31", undefined]);
    face.film = "2024-03-05";
    face.dental_stage = pick(["IIA", "IIIB", "IVC", "VA", undefined]);
    return JSON.parse(JSON.stringify(face));
  });
}
