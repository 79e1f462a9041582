// The directories of a TIFF file and their tags: TIFF 6.0, and BigTIFF.
import { latin, viewOf } from "./bytes.ts";
import { FilmError, sentence, type Sentence, type SentenceKey } from "./sentence.ts";

export const tag = {
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
  planar: 284,
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

/** Photometric interpretations. */
export const photometricKind = { whiteIsLow: 0, blackIsLow: 1, rgb: 2, palette: 3, yCbCr: 6 } as const;

const mostFrames = 1000;

export function headerDamaged(key: SentenceKey, values: Sentence["values"] = {}): FilmError {
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
export class Directory {
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
