// The strips and tiles of a TIFF picture.
import { checkSize, viewOf } from "./bytes.ts";
import { codec, type Unpack } from "./codecs.ts";
import { filmPixelLimit } from "./film.ts";
import { jpegMarkers } from "./jpeg_markers.ts";
import { FilmError, sentence, type Sentence, type SentenceKey } from "./sentence.ts";
import { type Directory, headerDamaged, photometricKind, tag } from "./tiff_directory.ts";
import { compressionName, unpacker } from "./tiff_packing.ts";

export const jpegCompression = 7;
const largestBlock = 8 * filmPixelLimit; // bytes of a strip or tile: four channels of 16 bits

/** A strip or tile: where it lies in the picture, and its samples side by side, with what stands beyond the picture's edge. */
export interface Block {
  readonly left: number;
  readonly top: number;
  readonly width: number;
  readonly height: number;
  /** With separate planes: of which sample. */
  readonly plane: number;
  readonly samples: Uint8Array | Uint16Array;
}

/** How the samples of a picture lie in its strips or tiles. */
export class Layout {
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
    const isRgb = this.directory.number(tag.photometric, 1) === photometricKind.rgb;
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
export function eachPixel(block: Block, layout: Layout, take: (pixel: number, at: number) => void): void {
  const width = Math.min(block.width, layout.width - block.left);
  for (let y = 0; y < Math.min(block.height, layout.height - block.top); ++y) {
    let pixel = (block.top + y) * layout.width + block.left;
    let at = y * block.width * layout.samples;
    for (let x = 0; x < width; ++x, at += layout.samples) take(pixel++, at);
  }
}
