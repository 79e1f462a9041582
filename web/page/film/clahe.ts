// Local contrast: contrast limited adaptive histogram equalisation (Zuiderveld, Graphics Gems IV, 1994, p. 474).
import type { GreyFilm } from "./film.ts";
import { extremes } from "./window.ts";

const tilesAcross = 8; // of a film: some 3 cm, as large as the structures that landmarks lie on
const bins = 512;
/** How steep a grey may become, as a multiple of what an even histogram would give. */
const clipLimit = 3;

/** What lies above the limit is spread evenly over all bins. */
function clipped(histogram: Uint32Array, count: number): Float64Array {
  const limit = Math.max(1, (clipLimit * count) / bins);
  let above = 0;
  const kept = Float64Array.from(histogram, (height) => {
    above += Math.max(0, height - limit);
    return Math.min(height, limit);
  });
  return kept.map((height) => height + above / bins);
}

/**
 * The film with samples whose local contrast is even; they keep the range of the film's own, so its windows still fit. The
 * film itself is left as it is.
 */
export function equalised(film: GreyFilm): GreyFilm {
  const { width, height, samples } = film;
  const [low, high] = extremes(samples);
  if (!(high > low)) return film;
  const range = high - low;
  const binOf = Uint16Array.from({ length: high + 1 }, (_, sample) => Math.max(0, Math.trunc(((sample - low) * (bins - 1)) / range + 0.5)));
  const tilesDown = Math.max(1, Math.round((tilesAcross * height) / width));
  const across = width / tilesAcross;
  const down = height / tilesDown;

  // What each bin becomes in each tile.
  const maps = new Float32Array(tilesAcross * tilesDown * bins);
  for (let row = 0; row < tilesDown; ++row) {
    for (let column = 0; column < tilesAcross; ++column) {
      const histogram = new Uint32Array(bins);
      const [left, right] = [Math.trunc(column * across), Math.trunc((column + 1) * across)];
      const [top, bottom] = [Math.trunc(row * down), Math.trunc((row + 1) * down)];
      for (let y = top; y < bottom; ++y)
        for (let at = y * width + left, end = y * width + right; at < end; ++at) {
          const bin = binOf[samples[at] ?? 0] ?? 0;
          histogram[bin] = (histogram[bin] ?? 0) + 1;
        }
      const count = Math.max(1, (right - left) * (bottom - top));
      const map = maps.subarray((row * tilesAcross + column) * bins, (row * tilesAcross + column + 1) * bins);
      let below = 0;
      clipped(histogram, count).forEach((inBin, bin) => {
        map[bin] = low + (range * (below + inBin / 2)) / count;
        below += inBin;
      });
    }
  }

  // Between the middles of four tiles, what these make of a sample.
  const even = samples instanceof Uint16Array ? new Uint16Array(samples.length) : new Uint8Array(samples.length);
  const placeOf = (at: number, size: number, count: number): [first: number, second: number, part: number] => {
    const place = Math.min(Math.max((at + 0.5) / size - 0.5, 0), count - 1);
    const first = Math.min(Math.trunc(place), count - 1);
    return [first, Math.min(first + 1, count - 1), place - first];
  };
  const columns = Array.from({ length: width }, (_, x) => placeOf(x, across, tilesAcross));
  const firstColumn = Int32Array.from(columns, ([first]) => first * bins);
  const secondColumn = Int32Array.from(columns, ([, second]) => second * bins);
  const columnPart = Float32Array.from(columns, ([, , part]) => part);
  for (let y = 0; y < height; ++y) {
    const [upper, lower, part] = placeOf(y, down, tilesDown);
    const above = upper * tilesAcross * bins;
    const below = lower * tilesAcross * bins;
    for (let x = 0, at = y * width; x < width; ++x, ++at) {
      const bin = binOf[samples[at] ?? 0] ?? 0;
      const one = (firstColumn[x] ?? 0) + bin;
      const other = (secondColumn[x] ?? 0) + bin;
      const share = columnPart[x] ?? 0;
      const high = (maps[above + one] ?? 0) * (1 - share) + (maps[above + other] ?? 0) * share;
      const low = (maps[below + one] ?? 0) * (1 - share) + (maps[below + other] ?? 0) * share;
      even[at] = high * (1 - part) + low * part + 0.5;
    }
  }
  return { ...film, samples: even };
}
