// PNG pictures, W3C Portable Network Graphics (Second Edition).
import { checkSize, latin, pictureHeader, plainRule, viewOf } from "./bytes.ts";
import type { Film } from "./film.ts";
import { inflate } from "./inflate.ts";
import { FilmError, sentence, type Sentence, type SentenceKey } from "./sentence.ts";

const signatureBytes = 8;

interface Shape {
  readonly width: number;
  readonly height: number;
  readonly depth: number;
  readonly colourType: number;
  readonly interlaced: boolean;
}

interface Parts {
  readonly shape: Shape;
  readonly palette: Uint8Array | null;
  readonly transparency: Uint8Array | null;
  readonly packed: readonly Uint8Array[];
}

function damaged(place: Sentence, key: SentenceKey, values: Sentence["values"] = {}): FilmError {
  return new FilmError("pngDamaged", { place, what: sentence(key, values) });
}

const inHeader = sentence("inHeader");

const checksums = Uint32Array.from({ length: 256 }, (_, byte) => {
  let sum = byte;
  for (let i = 0; i < 8; ++i) sum = sum & 1 ? 0xedb88320 ^ (sum >>> 1) : sum >>> 1;
  return sum;
});

function checksum(bytes: Uint8Array): number {
  let sum = 0xffffffff;
  for (let i = 0; i < bytes.length; ++i) sum = (checksums[(sum ^ (bytes[i] ?? 0)) & 0xff] ?? 0) ^ (sum >>> 8);
  return (sum ^ 0xffffffff) >>> 0;
}

const channelsOf: Readonly<Record<number, number>> = { 0: 1, 2: 3, 3: 1, 4: 2, 6: 4 };
const depthsOf: Readonly<Record<number, readonly number[]>> = {
  0: [1, 2, 4, 8, 16],
  2: [8, 16],
  3: [1, 2, 4, 8],
  4: [8, 16],
  6: [8, 16],
};

function shapeOf(header: Uint8Array): Shape {
  if (header.length !== 13) throw damaged(inHeader, "pngHeader");
  const view = viewOf(header);
  const [width, height] = [view.getUint32(0), view.getUint32(4)];
  const [depth, colourType, compression, filter, interlace] = [8, 9, 10, 11, 12].map((at) => view.getUint8(at));
  const known = depthsOf[colourType ?? -1]?.includes(depth ?? 0) && compression === 0 && filter === 0;
  if (!known || interlace === undefined || interlace > 1) throw damaged(inHeader, "pngHeader");
  checkSize(width, height);
  return { width, height, depth: depth ?? 0, colourType: colourType ?? 0, interlaced: interlace === 1 };
}

/** The chunks up to the end of the file, each with its checksum. Damaged ones that a picture can do without are left out. */
function partsOf(bytes: Uint8Array): Parts {
  const view = viewOf(bytes);
  let shape: Shape | null = null;
  let palette: Uint8Array | null = null;
  let transparency: Uint8Array | null = null;
  const packed: Uint8Array[] = [];
  for (let at = signatureBytes; ; ) {
    if (bytes.length - at < 12) break;
    const length = view.getUint32(at);
    const name = latin(bytes, at + 4, at + 8);
    const present = Math.min(length, bytes.length - at - 8);
    const body = bytes.subarray(at + 8, at + 8 + present);
    if (shape === null && name !== "IHDR") throw damaged(inHeader, "pngHeader");
    if (present < length || bytes.length - at - 12 < length) {
      if (name === "IDAT") packed.push(body); // up to where it ends, to tell the row
      break;
    }
    const sound = view.getUint32(at + 8 + length) === checksum(bytes.subarray(at + 4, at + 8 + length));
    at += 12 + length;
    if (!sound && /^[A-Z]/.test(name)) {
      const row = shape && packed.length > 0 ? sentence("atByte", { byte: at - 4 }) : inHeader;
      throw damaged(row, "pngChecksum", { chunk: name });
    }
    if (!sound) continue;
    if (name === "IHDR") shape = shapeOf(body);
    else if (name === "PLTE") palette = body;
    else if (name === "tRNS") transparency = body;
    else if (name === "IDAT") packed.push(body);
    else if (name === "IEND" && shape) return { shape, palette, transparency, packed };
  }
  if (!shape) throw damaged(inHeader, "pngEndsEarly");
  const parts = { shape, palette, transparency, packed };
  read(parts); // throws at the row where it ends
  throw damaged(sentence("atRow", { row: shape.height, rows: shape.height }), "pngEndsEarly");
}

/** The filters of section 9, in place. `above` is the row before, zeros for the first. */
function unfilter(filter: number, row: Uint8Array, above: Uint8Array, step: number): boolean {
  const length = row.length;
  switch (filter) {
    case 0:
      return true;
    case 1:
      for (let i = step; i < length; ++i) row[i] = (row[i] ?? 0) + (row[i - step] ?? 0);
      return true;
    case 2:
      for (let i = 0; i < length; ++i) row[i] = (row[i] ?? 0) + (above[i] ?? 0);
      return true;
    case 3:
      for (let i = 0; i < length; ++i) {
        const left = i < step ? 0 : (row[i - step] ?? 0);
        row[i] = (row[i] ?? 0) + ((left + (above[i] ?? 0)) >> 1);
      }
      return true;
    case 4:
      for (let i = 0; i < length; ++i) {
        const left = i < step ? 0 : (row[i - step] ?? 0);
        const corner = i < step ? 0 : (above[i - step] ?? 0);
        const up = above[i] ?? 0;
        const byLeft = Math.abs(up - corner);
        const byUp = Math.abs(left - corner);
        const byCorner = Math.abs(left + up - 2 * corner);
        row[i] = (row[i] ?? 0) + (byLeft <= byUp && byLeft <= byCorner ? left : byUp <= byCorner ? up : corner);
      }
      return true;
    default:
      return false;
  }
}

interface Pass {
  readonly left: number;
  readonly top: number;
  readonly across: number;
  readonly down: number;
}

const wholePass: readonly Pass[] = [{ left: 0, top: 0, across: 1, down: 1 }];
const adam7: readonly Pass[] = [
  { left: 0, top: 0, across: 8, down: 8 },
  { left: 4, top: 0, across: 8, down: 8 },
  { left: 0, top: 4, across: 4, down: 8 },
  { left: 2, top: 0, across: 4, down: 4 },
  { left: 0, top: 2, across: 2, down: 4 },
  { left: 1, top: 0, across: 2, down: 2 },
  { left: 0, top: 1, across: 1, down: 2 },
];

/** The rows of all passes in the order of the file: where each lies and how many pixels it has. */
function* rowsOf(shape: Shape): Generator<{ y: number; x: number; across: number; count: number }> {
  for (const pass of shape.interlaced ? adam7 : wholePass) {
    const count = Math.ceil((shape.width - pass.left) / pass.across);
    if (count <= 0) continue;
    for (let y = pass.top; y < shape.height; y += pass.down) yield { y, x: pass.left, across: pass.across, count };
  }
}

/** Takes the samples out of a row, each in a place of its own. 16 bits have their high byte first. */
function unpackRow(row: Uint8Array, depth: number, to: Uint16Array, count: number): void {
  if (depth === 8) for (let i = 0; i < count; ++i) to[i] = row[i] ?? 0;
  else if (depth === 16) for (let i = 0; i < count; ++i) to[i] = ((row[2 * i] ?? 0) << 8) | (row[2 * i + 1] ?? 0);
  else {
    const mask = (1 << depth) - 1;
    for (let i = 0, bit = 0; i < count; ++i, bit += depth)
      to[i] = ((row[bit >> 3] ?? 0) >> (8 - depth - (bit & 7))) & mask;
  }
}

/** 16 bits as 8, rounded: x * 255 / 65535. */
function eightBits(sample: number, depth: number): number {
  return depth === 16 ? (sample * 255 + 32895) >>> 16 : depth === 8 ? sample : (sample * 255) / ((1 << depth) - 1);
}

/** Writes the samples of a row, `count` pixels of them, to their places in the picture. */
type Store = (samples: Uint16Array, y: number, x: number, across: number, count: number) => void;

function greyStore({ width, depth, colourType }: Shape, to: Uint8Array | Uint16Array): Store {
  const channels = channelsOf[colourType] ?? 1;
  const stretch = depth < 8 ? 255 / ((1 << depth) - 1) : 1;
  return (samples, y, x, across, count) => {
    for (let i = 0, at = y * width + x; i < count; ++i, at += across) to[at] = (samples[i * channels] ?? 0) * stretch;
  };
}

function colourStore({ shape, palette, transparency }: Parts, to: Uint8ClampedArray): Store {
  const { width, depth, colourType } = shape;
  const channels = channelsOf[colourType] ?? 1;
  const coloured = colourType === 2 || colourType === 6;
  const hasAlpha = colourType >= 4;
  if (colourType === 3 && !palette) throw damaged(inHeader, "pngPalette");
  const clear = transparency && transparency.length >= 2 * (coloured ? 3 : 1) ? viewOf(transparency) : null;
  const isClear = (samples: Uint16Array, at: number): boolean =>
    clear !== null &&
    clear.getUint16(0) === samples[at] &&
    (!coloured || (clear.getUint16(2) === samples[at + 1] && clear.getUint16(4) === samples[at + 2]));
  return (samples, y, x, across, count) => {
    for (let i = 0, at = 4 * (y * width + x); i < count; ++i, at += 4 * across) {
      const from = i * channels;
      const sample = samples[from] ?? 0;
      if (colourType === 3) {
        for (let c = 0; c < 3; ++c) to[at + c] = palette?.[3 * sample + c] ?? 0;
        to[at + 3] = transparency?.[sample] ?? 255;
        continue;
      }
      for (let c = 0; c < 3; ++c) to[at + c] = eightBits(samples[from + (coloured ? c : 0)] ?? 0, depth);
      to[at + 3] = hasAlpha ? eightBits(samples[from + channels - 1] ?? 0, depth) : isClear(samples, from) ? 0 : 255;
    }
  };
}

function read(parts: Parts): Film {
  const { shape } = parts;
  const { width, height, depth, colourType } = shape;
  const channels = channelsOf[colourType] ?? 1;
  const grey = (colourType === 0 && !parts.transparency) || (colourType === 4 && depth === 16);
  const greySamples = !grey ? null : depth === 16 ? new Uint16Array(width * height) : new Uint8Array(width * height);
  const colours = grey ? null : new Uint8ClampedArray(4 * width * height);
  const store = greySamples ? greyStore(shape, greySamples) : colourStore(parts, colours ?? new Uint8ClampedArray());

  const bitsOfPixel = channels * depth;
  const step = Math.max(1, bitsOfPixel >> 3);
  const rows = rowsOf(shape);
  let next = rows.next();
  let row = new Uint8Array();
  let above = new Uint8Array();
  let filter = -1;
  let filled = 0;
  let pass = -1;
  const samples = new Uint16Array(width * channels);
  const place = (): Sentence => sentence("atRow", { row: next.done ? height : next.value.y, rows: height });
  const take = (bytes: Uint8Array): boolean => {
    for (let at = 0; at < bytes.length && !next.done; ) {
      const { y, x, across, count } = next.value;
      if (filter < 0) {
        const length = (count * bitsOfPixel + 7) >> 3;
        const starts = pass !== (across << 8) + x || row.length !== length; // a pass knows no row above its first
        pass = (across << 8) + x;
        if (starts) [row, above] = [new Uint8Array(length), new Uint8Array(length)];
        filter = bytes[at++] ?? 0;
        filled = 0;
        continue;
      }
      const taken = Math.min(row.length - filled, bytes.length - at);
      row.set(bytes.subarray(at, at + taken), filled);
      filled += taken;
      at += taken;
      if (filled < row.length) break;
      if (!unfilter(filter, row, above, step)) throw damaged(place(), "pngFilter", { filter });
      unpackRow(row, depth, samples, count * channels);
      store(samples, y, x, across, count);
      [row, above] = [above, row];
      filter = -1;
      next = rows.next();
    }
    return !next.done;
  };
  try {
    inflate("zlib", parts.packed, take);
  } catch (error) {
    if (error instanceof FilmError) throw error;
    const early = error instanceof Error && /EOF/.test(error.message);
    throw damaged(place(), early ? "pngEndsEarly" : "pngDeflate");
  }
  if (!next.done) throw damaged(place(), "pngEndsEarly");
  const header = pictureHeader("PNG", "deflate");
  if (colours) return { kind: "colour", width, height, bits: 8, samples: colours, header };
  const bits = depth === 16 ? 16 : 8;
  return { kind: "grey", width, height, bits, samples: greySamples ?? new Uint8Array(), rule: plainRule, header };
}

export function decodePng(bytes: Uint8Array): Film {
  return read(partsOf(bytes));
}
