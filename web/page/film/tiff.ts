// TIFF pictures, TIFF 6.0, and BigTIFF.
import { checkSize, latin, pictureHeader, plainRule, viewOf } from "./bytes.ts";
import { codec, type Unpack } from "./codecs.ts";
import { filmPixelLimit, type Film, type FilmHeader, type Resolution } from "./film.ts";
import { jpegMarkers } from "./jpeg_markers.ts";
import { FilmError, sentence, type Sentence, type SentenceKey } from "./sentence.ts";
import { compressionName, unpacker } from "./tiff_packing.ts";

const tag = {
  width: 256,
  height: 257,
  bits: 258,
  compression: 259,
  photometric: 262,
  fillOrder: 266,
  make: 271,
  model: 272,
  stripOffsets: 273,
  orientation: 274,
  samples: 277,
  rowsPerStrip: 278,
  stripBytes: 279,
  xResolution: 282,
  yResolution: 283,
  planar: 284,
  resolutionUnit: 296,
  predictor: 317,
  colourMap: 320,
  tileWidth: 322,
  tileHeight: 323,
  tileOffsets: 324,
  tileBytes: 325,
  extraSamples: 338,
  sampleFormat: 339,
  jpegTables: 347,
} as const;

const kind = { whiteIsLow: 0, blackIsLow: 1, rgb: 2, palette: 3, yCbCr: 6 } as const;
const jpegCompression = 7;
const cmPerInch = 2.54;
const mostFrames = 1000;
const largestBlock = 8 * filmPixelLimit; // bytes of a strip or tile: four channels of 16 bits

function headerDamaged(key: SentenceKey, values: Sentence["values"] = {}): FilmError {
  return new FilmError("tiffHeader", { what: sentence(key, values) });
}

const bytesOfType: Readonly<Record<number, number>> = {
  1: 1, 2: 1, 3: 2, 4: 4, 5: 8, 6: 1, 7: 1, 8: 2, 9: 4, 10: 8, 11: 4, 12: 8, 13: 4, 16: 8, 17: 8, 18: 8,
};

interface Entry {
  readonly type: number;
  readonly count: number;
  readonly at: number;
}

/** The tags of the first picture, each read where it is asked for. */
class Directory {
  readonly frames: number;
  readonly little: boolean;
  private readonly bytes: Uint8Array;
  private readonly view: DataView;
  private readonly big: boolean;
  private readonly entries: ReadonlyMap<number, Entry>;

  constructor(bytes: Uint8Array) {
    this.bytes = bytes;
    this.view = viewOf(bytes);
    this.little = bytes[0] === 0x49;
    this.big = bytes[this.little ? 2 : 3] === 43;
    const first = this.offset(this.big ? 8 : 4);
    const found = this.directory(first);
    if (!found || found.entries.size === 0) throw headerDamaged("tiffDirectory");
    this.entries = found.entries;
    const seen = new Set([first]);
    let next = found.next;
    while (next > 0 && !seen.has(next) && seen.size < mostFrames) {
      const other = this.directory(next);
      if (!other) break;
      seen.add(next);
      next = other.next;
    }
    this.frames = seen.size;
  }

  private offset(at: number): number {
    if (at + (this.big ? 8 : 4) > this.bytes.length) return 0;
    return this.big ? Number(this.view.getBigUint64(at, this.little)) : this.view.getUint32(at, this.little);
  }

  private directory(at: number): { entries: Map<number, Entry>; next: number } | null {
    const [countBytes, entryBytes, valueBytes] = this.big ? [8, 20, 8] : [2, 12, 4];
    if (at < 8 || at + countBytes > this.bytes.length) return null;
    const count = this.big ? this.offset(at) : this.view.getUint16(at, this.little);
    const end = at + countBytes + count * entryBytes;
    if (count > 0xffff || end > this.bytes.length) return null;
    const entries = new Map<number, Entry>();
    for (let i = 0; i < count; ++i) {
      const entry = at + countBytes + i * entryBytes;
      const type = this.view.getUint16(entry + 2, this.little);
      const values = this.offset(entry + 4);
      const length = values * (bytesOfType[type] ?? Infinity);
      const value = entry + entryBytes - valueBytes;
      const from = length <= valueBytes ? value : this.offset(value);
      if (from + length > this.bytes.length) continue; // as if it were not there
      const name = this.view.getUint16(entry, this.little);
      if (!entries.has(name)) entries.set(name, { type, count: values, at: from });
    }
    return { entries, next: this.offset(end) };
  }

  private value({ type, at }: Entry, i: number): number {
    const from = at + i * (bytesOfType[type] ?? 0);
    switch (type) {
      case 3:
        return this.view.getUint16(from, this.little);
      case 4:
      case 13:
        return this.view.getUint32(from, this.little);
      case 5:
        return Math.fround(this.view.getUint32(from, this.little) / this.view.getUint32(from + 4, this.little));
      case 11:
        return this.view.getFloat32(from, this.little);
      case 12:
        return this.view.getFloat64(from, this.little);
      case 16:
      case 18:
        return Number(this.view.getBigUint64(from, this.little));
      default:
        return this.view.getUint8(from);
    }
  }

  number(name: number, otherwise: number): number {
    const entry = this.entries.get(name);
    return entry && entry.count > 0 ? this.value(entry, 0) : otherwise;
  }

  /** How many numbers a tag has, and each of them. */
  numbers(name: number): { readonly count: number; readonly at: (i: number) => number } {
    const entry = this.entries.get(name);
    if (!entry) throw headerDamaged("tiffTag", { tag: name });
    return { count: entry.count, at: (i) => this.value(entry, i) };
  }

  has(name: number): boolean {
    return this.entries.has(name);
  }

  raw(name: number): Uint8Array | null {
    const entry = this.entries.get(name);
    return entry && bytesOfType[entry.type] === 1 ? this.bytes.subarray(entry.at, entry.at + entry.count) : null;
  }

  text(name: number): string {
    const raw = this.raw(name);
    return raw ? latin(raw).replace(/\0[\s\S]*$/, "") : "";
  }

  /** The bytes of a strip or tile. */
  stored(at: number, length: number): Uint8Array | null {
    return at + length <= this.bytes.length ? this.bytes.subarray(at, at + length) : null;
  }
}

function resolutionOf(directory: Directory): Resolution | null {
  const unit = directory.number(tag.resolutionUnit, 2);
  const factor = unit === 2 ? 1 : unit === 3 ? cmPerInch : 0;
  const acrossDpi = directory.number(tag.xResolution, 0) * factor;
  const downDpi = directory.number(tag.yResolution, 0) * factor;
  return acrossDpi > 0 && downDpi > 0 ? { acrossDpi, downDpi } : null;
}

function headerOf(directory: Directory): FilmHeader {
  const orientation = directory.number(tag.orientation, 1);
  return pictureHeader("TIFF", compressionName(directory.number(tag.compression, 1)), {
    frames: directory.frames,
    resolution: resolutionOf(directory),
    madeBy: [directory.text(tag.make), directory.text(tag.model)].filter((text) => text !== "").join(" "),
    doubts: orientation > 1 ? [sentence("orientation", { orientation })] : [],
  });
}

/** A strip or tile: where it lies in the picture, and its samples side by side, with what stands beyond the picture's edge. */
interface Block {
  readonly left: number;
  readonly top: number;
  readonly width: number;
  readonly height: number;
  /** With separate planes: of which sample. */
  readonly plane: number;
  readonly samples: Uint8Array | Uint16Array;
}

/** How the samples of a picture lie in its strips or tiles. */
class Layout {
  readonly width: number;
  readonly height: number;
  readonly bits: number;
  readonly samples: number;
  readonly planes: number;
  private readonly directory: Directory;
  private readonly compression: number;
  private readonly tiled: boolean;
  private readonly blockWidth: number;
  private readonly blockHeight: number;

  constructor(directory: Directory) {
    this.directory = directory;
    this.width = directory.number(tag.width, 0);
    this.height = directory.number(tag.height, 0);
    checkSize(this.width, this.height);
    this.bits = directory.number(tag.bits, 1);
    const samples = directory.number(tag.samples, 1);
    this.planes = directory.number(tag.planar, 1) === 2 ? samples : 1;
    this.samples = this.planes > 1 ? 1 : samples;
    this.compression = directory.number(tag.compression, 1);
    this.tiled = directory.has(tag.tileWidth);
    this.blockWidth = this.tiled ? directory.number(tag.tileWidth, 0) : this.width;
    const rows = Math.min(directory.number(tag.rowsPerStrip, this.height) || this.height, this.height);
    this.blockHeight = this.tiled ? directory.number(tag.tileHeight, 0) : rows;
    if (this.blockWidth <= 0 || this.blockHeight <= 0) throw headerDamaged("tiffTag", { tag: tag.tileWidth });
    if (this.rowBytes * this.blockHeight > largestBlock) throw new FilmError("tiffTiles");
  }

  private get rowBytes(): number {
    return Math.ceil((this.blockWidth * this.samples * this.bits) / 8);
  }

  private place(left: number, top: number): Sentence {
    return this.tiled ? sentence("inTile", { left, top }) : sentence("atRow", { row: top, rows: this.height });
  }

  async *blocks(): AsyncGenerator<Block> {
    const offsets = this.directory.numbers(this.tiled ? tag.tileOffsets : tag.stripOffsets);
    const lengths = this.directory.numbers(this.tiled ? tag.tileBytes : tag.stripBytes);
    const unpack = this.compression === jpegCompression ? await this.jpegUnpacker() : this.bytesUnpacker();
    let index = 0;
    for (let plane = 0; plane < this.planes; ++plane) {
      for (let top = 0; top < this.height; top += this.blockHeight) {
        const height = this.tiled ? this.blockHeight : Math.min(this.blockHeight, this.height - top);
        for (let left = 0; left < this.width; left += this.blockWidth, ++index) {
          const fail = (key: SentenceKey, values: Sentence["values"] = {}): FilmError =>
            new FilmError("tiffDamaged", { place: this.place(left, top), what: sentence(key, values) });
          const known = index < offsets.count && index < lengths.count;
          const packed = known ? this.directory.stored(offsets.at(index), lengths.at(index)) : null;
          if (!packed) throw fail("tiffStrip");
          yield { left, top, width: this.blockWidth, height, plane, samples: unpack(packed, height, fail) };
        }
      }
    }
  }

  private bytesUnpacker() {
    const unpack = unpacker(this.compression);
    if (!unpack) {
      const what = sentence("tiffCompression", { compression: compressionName(this.compression) });
      throw new FilmError("tiffDamaged", { place: sentence("inHeader"), what });
    }
    const predictor = this.directory.number(tag.predictor, 1);
    const reversed = this.directory.number(tag.fillOrder, 1) === 2;
    return (packed: Uint8Array, height: number, fail: (key: SentenceKey, values?: Sentence["values"]) => FilmError) => {
      const needed = this.rowBytes * height;
      const unpacked = new Uint8Array(needed);
      const found = unpack(reversed ? packed.map(reversedBits) : packed, unpacked);
      if (found < needed) throw fail("tiffShort", { found, needed });
      const samples = this.samplesOf(unpacked, height);
      if (predictor === 2) this.addUp(samples);
      else if (predictor > 2) throw fail("tiffPacked");
      return samples;
    };
  }

  /** Each strip is a JPEG picture whose tables may stand in a tag. */
  private async jpegUnpacker() {
    const unpack: Unpack = await codec("jpeg");
    const tables = this.directory.raw(tag.jpegTables)?.slice(2, -2) ?? new Uint8Array();
    // Three samples are taken for YCbCr by themselves, and for RGB with Adobe's mark.
    const isRgb = this.directory.number(tag.photometric, 1) === kind.rgb;
    const mark = isRgb ? Uint8Array.of(0xff, 0xee, 0, 14, 0x41, 0x64, 0x6f, 0x62, 0x65, 0, 100, 0, 0, 0, 0, 0) : new Uint8Array();
    return (packed: Uint8Array, height: number, fail: (key: SentenceKey) => FilmError) => {
      const whole = new Uint8Array(2 + mark.length + tables.length + Math.max(packed.length - 2, 0));
      whole.set([0xff, 0xd8]);
      whole.set(mark, 2);
      whole.set(tables, 2 + mark.length);
      whole.set(packed.subarray(2), 2 + mark.length + tables.length);
      const markers = jpegMarkers(whole);
      const fits = markers?.width === this.blockWidth && markers.height >= height && markers.height <= this.blockHeight;
      if (!markers?.ended || !fits || markers.channels !== this.samples || this.bits !== 8) throw fail("tiffPacked");
      try {
        return unpack(whole).bytes;
      } catch {
        throw fail("tiffPacked");
      }
    };
  }

  /** A sample a place; rows begin with a whole byte. */
  private samplesOf(bytes: Uint8Array, height: number): Uint8Array | Uint16Array {
    if (this.bits === 8) return bytes;
    const across = this.blockWidth * this.samples;
    const samples = new Uint16Array(across * height);
    const view = viewOf(bytes);
    if (this.bits === 16) {
      for (let i = 0; i < samples.length; ++i) samples[i] = view.getUint16(2 * i, this.directory.little);
      return samples;
    }
    for (let y = 0; y < height; ++y) {
      for (let x = 0, bit = 8 * this.rowBytes * y; x < across; ++x) {
        let value = 0;
        for (let i = 0; i < this.bits; ++i, ++bit) value = (value << 1) | (((bytes[bit >> 3] ?? 0) >> (7 - (bit & 7))) & 1);
        samples[y * across + x] = value;
      }
    }
    return samples;
  }

  /** Section 14: each sample is stored as its difference from the one to its left. */
  private addUp(samples: Uint8Array | Uint16Array): void {
    const across = this.blockWidth * this.samples;
    for (let row = 0; row < samples.length; row += across)
      for (let i = row + this.samples; i < row + across; ++i) samples[i] = (samples[i] ?? 0) + (samples[i - this.samples] ?? 0);
  }
}

function reversedBits(byte: number): number {
  let reversed = 0;
  for (let bit = 0; bit < 8; ++bit) reversed |= ((byte >> bit) & 1) << (7 - bit);
  return reversed;
}

/** Calls `take` for each pixel of the picture that a block has: its place, and where its samples begin. */
function eachPixel(block: Block, layout: Layout, take: (pixel: number, at: number) => void): void {
  const width = Math.min(block.width, layout.width - block.left);
  for (let y = 0; y < Math.min(block.height, layout.height - block.top); ++y) {
    let pixel = (block.top + y) * layout.width + block.left;
    let at = y * block.width * layout.samples;
    for (let x = 0; x < width; ++x, at += layout.samples) take(pixel++, at);
  }
}

async function readGrey(directory: Directory, layout: Layout, header: FilmHeader): Promise<Film> {
  const { width, height, bits } = layout;
  const format = directory.number(tag.sampleFormat, 1);
  if (bits < 1 || bits > 16 || ![1, 2, 4].includes(format))
    throw new FilmError(format === 3 ? "tiffFractions" : "tiffSamples", { bits });
  const samples = bits > 8 ? new Uint16Array(width * height) : new Uint8Array(width * height);
  const half = format === 2 ? 1 << (bits - 1) : 0; // two's complement becomes a count from the lowest value
  for await (const block of layout.blocks()) {
    if (block.plane > 0) break;
    eachPixel(block, layout, (pixel, at) => (samples[pixel] = (block.samples[at] ?? 0) ^ half));
  }
  const whiteIsLow = directory.number(tag.photometric, 1) === kind.whiteIsLow;
  return { kind: "grey", width, height, bits, samples, rule: { ...plainRule, whiteIsLow, lowest: -half || 0 }, header };
}

async function readColour(directory: Directory, layout: Layout, header: FilmHeader): Promise<Film> {
  const { width, height, bits } = layout;
  const photometric = directory.number(tag.photometric, 1);
  const samples = layout.samples * layout.planes;
  const isPalette = photometric === kind.palette && samples === 1 && bits <= 8;
  const isYcc = photometric === kind.yCbCr && directory.number(tag.compression, 1) === jpegCompression;
  if (!isPalette && !((photometric === kind.rgb || isYcc) && samples >= 3 && (bits === 8 || bits === 16)))
    throw new FilmError("tiffColour", { samples, bits, kind: photometric });
  const colours = new Uint8ClampedArray(4 * width * height).fill(255);
  const eight = (sample: number): number => (bits === 16 ? Math.trunc((sample + 128) / 257) : sample);
  const unassociated = 2;
  const channels = samples > 3 && directory.number(tag.extraSamples, 0) === unassociated ? 4 : 3;
  const map = isPalette ? directory.numbers(tag.colourMap) : null;
  const entries = 1 << bits;
  if (map && map.count < 3 * entries) throw headerDamaged("tiffTag", { tag: tag.colourMap });
  const palette = map && Uint8Array.from({ length: 3 * entries }, (_, i) => map.at(i) >> 8);
  for await (const block of layout.blocks()) {
    eachPixel(block, layout, (pixel, at) => {
      const sample = block.samples[at] ?? 0;
      if (palette) for (let c = 0; c < 3; ++c) colours[4 * pixel + c] = palette[c * entries + sample] ?? 0;
      else if (layout.planes > 1) colours[4 * pixel + block.plane] = block.plane < channels ? eight(sample) : 255;
      else for (let c = 0; c < channels; ++c) colours[4 * pixel + c] = eight(block.samples[at + c] ?? 0);
    });
  }
  return { kind: "colour", width, height, bits: 8, samples: colours, header };
}

export async function decodeTiff(bytes: Uint8Array): Promise<Film> {
  const directory = new Directory(bytes);
  const layout = new Layout(directory);
  const photometric = directory.number(tag.photometric, kind.blackIsLow);
  const grey = photometric === kind.blackIsLow || photometric === kind.whiteIsLow;
  return (grey ? readGrey : readColour)(directory, layout, headerOf(directory));
}
