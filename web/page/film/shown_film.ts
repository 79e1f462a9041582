// A film on a canvas: of all its pixels only those that are seen are given their greys, at the size in which they are seen.
// So a window follows the hand at any zoom, and the samples stay as they are.
import type { ColourFilm, Film, GreyFilm } from "./film.ts";
import { shades, type GreyView } from "./window.ts";

/** The film in pixels that are `step` of its own wide, each the mean of those. */
interface Level {
  readonly step: number;
  readonly width: number;
  readonly height: number;
  readonly samples: Film["samples"];
}

/** Stored pixels of the film, which may reach beyond it. */
export interface Region {
  readonly left: number;
  readonly top: number;
  readonly right: number;
  readonly bottom: number;
}

function halved({ step, width, height, samples }: Level, channels: number): Level {
  const [across, down] = [Math.ceil(width / 2), Math.ceil(height / 2)];
  const length = across * down * channels;
  const means =
    samples instanceof Uint16Array ? new Uint16Array(length) : samples instanceof Uint8Array ? new Uint8Array(length) : new Uint8ClampedArray(length);
  let to = 0;
  for (let y = 0; y < down; ++y) {
    const upper = 2 * y * width;
    const lower = Math.min(2 * y + 1, height - 1) * width;
    for (let x = 0; x < across; ++x) {
      const left = 2 * x;
      const right = Math.min(left + 1, width - 1);
      for (let c = 0; c < channels; ++c) {
        const sum =
          (samples[(upper + left) * channels + c] ?? 0) +
          (samples[(upper + right) * channels + c] ?? 0) +
          (samples[(lower + left) * channels + c] ?? 0) +
          (samples[(lower + right) * channels + c] ?? 0);
        means[to++] = (sum + 2) >> 2;
      }
    }
  }
  return { step: 2 * step, width: across, height: down, samples: means };
}

/** Brightness and contrast of colours, a table for all three. */
function colourTable({ inverted, brightness, contrast }: GreyView): Uint8ClampedArray {
  return Uint8ClampedArray.from({ length: 256 }, (_, value) => {
    const turned = inverted ? 255 - value : value;
    return ((turned / 255 - 0.5) * contrast + 0.5 + brightness) * 255;
  });
}

const opaque = 0xff000000;

/** Writes the pixels of a region of a level as 0xAABBGGRR. */
type Paint = (level: Level, left: number, top: number, width: number, height: number, to: Int32Array) => void;

function greyPaint(film: GreyFilm, view: GreyView): Paint {
  const table = shades(film, view);
  const greys = new Int32Array(table.length);
  for (let sample = 0; sample < greys.length; ++sample) greys[sample] = opaque | ((table[sample] ?? 0) * 0x010101);
  return ({ width: stride, samples }, left, top, width, height, to) => {
    for (let y = 0, i = 0; y < height; ++y) {
      let from = (top + y) * stride + left;
      for (const end = i + width; i < end; ++i) to[i] = greys[samples[from++] ?? 0] ?? 0;
    }
  };
}

function colourPaint(view: GreyView): Paint {
  const table = colourTable(view);
  return ({ width: stride, samples }, left, top, width, height, to) => {
    for (let y = 0, i = 0; y < height; ++y) {
      let from = 4 * ((top + y) * stride + left);
      for (const end = i + width; i < end; ++i, from += 4) {
        const red = table[samples[from] ?? 0] ?? 0;
        const green = table[samples[from + 1] ?? 0] ?? 0;
        const blue = table[samples[from + 2] ?? 0] ?? 0;
        to[i] = ((samples[from + 3] ?? 0) << 24) | (blue << 16) | (green << 8) | red;
      }
    }
  };
}

const smallSide = 512;

export class ShownFilm {
  readonly film: Film;
  private readonly levels: [Level, ...Level[]];
  private readonly sheets = { small: document.createElement("canvas"), large: document.createElement("canvas") };
  private paintFor: { readonly view: GreyView; readonly paint: Paint } | null = null;

  constructor(film: Film) {
    this.film = film;
    this.levels = [{ step: 1, ...film }];
  }

  /**
   * Draws what of `region` lies in the film. The context's own transform takes stored pixels, whose corners have whole
   * coordinates, to where they are seen; `zoom` is how many pixels of the canvas one of the film takes there.
   */
  draw(context: CanvasRenderingContext2D, view: GreyView, region: Region, zoom: number): void {
    const level = this.level(1 / zoom);
    const { step } = level;
    // A pixel more on each side, so that smoothing knows what lies beyond the edge.
    const left = Math.max(0, Math.floor(region.left / step) - 1);
    const top = Math.max(0, Math.floor(region.top / step) - 1);
    const width = Math.min(level.width, Math.ceil(region.right / step) + 1) - left;
    const height = Math.min(level.height, Math.ceil(region.bottom / step) + 1) - top;
    if (width <= 0 || height <= 0) return;
    // The browser copies a sheet that was drawn before it is written again: a loupe has a small one.
    const sheet = Math.max(width, height) <= smallSide ? this.sheets.small : this.sheets.large;
    const pixels = sheet.getContext("2d", { willReadFrequently: true });
    if (!pixels) return;
    if (sheet.width < width) sheet.width = width;
    if (sheet.height < height) sheet.height = height;
    const image = pixels.createImageData(width, height);
    this.paint(view)(level, left, top, width, height, new Int32Array(image.data.buffer));
    pixels.putImageData(image, 0, 0);
    context.drawImage(sheet, 0, 0, width, height, left * step, top * step, width * step, height * step);
  }

  private paint(view: GreyView): Paint {
    if (this.paintFor?.view !== view) {
      const paint = this.film.kind === "grey" ? greyPaint(this.film, view) : colourPaint(view);
      this.paintFor = { view, paint };
    }
    return this.paintFor.paint;
  }

  /** That whose pixels are the widest up to `widest` of the film's own. */
  private level(widest: number): Level {
    let last = this.levels.at(-1) ?? this.levels[0];
    while (2 * last.step <= widest && last.width >= 64 && last.height >= 64) {
      last = halved(last, this.film.kind === "grey" ? 1 : 4);
      this.levels.push(last);
    }
    return this.levels.reduce((best, level) => (level.step <= widest ? level : best));
  }
}

/** How far apart the channels of a pixel are where JPEG has stored greys as colours. */
const greyWithin = 8;

/** A colour film of nothing but greys, as phones and scanners write X-rays: as grey film; null where it has colours. */
export function greyOf(film: ColourFilm): GreyFilm | null {
  const { width, height, samples: colours, header } = film;
  const samples = new Uint8Array(width * height);
  for (let i = 0, from = 0; i < samples.length; ++i, from += 4) {
    const [red, green, blue] = [colours[from] ?? 0, colours[from + 1] ?? 0, colours[from + 2] ?? 0];
    if (Math.abs(red - green) > greyWithin || Math.abs(green - blue) > greyWithin || colours[from + 3] !== 255) return null;
    samples[i] = (red + 2 * green + blue + 2) >> 2;
  }
  const rule = { whiteIsLow: false, lowest: 0, slope: 1, intercept: 0, modality: null, voi: null, windows: [] };
  return { kind: "grey", width, height, bits: 8, samples, rule, header };
}
