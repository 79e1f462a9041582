// TIFF pictures, TIFF 6.0, and BigTIFF.
import { pictureHeader, plainRule } from "./bytes.ts";
import type { Film, FilmHeader } from "./film.ts";
import { FilmError, sentence } from "./sentence.ts";
import { eachPixel, jpegCompression, Layout } from "./tiff_blocks.ts";
import { Directory, headerDamaged, photometricKind, tag } from "./tiff_directory.ts";
import { compressionName } from "./tiff_packing.ts";

function headerOf(directory: Directory): FilmHeader {
  const orientation = directory.number(tag.orientation, 1);
  return pictureHeader("TIFF", compressionName(directory.number(tag.compression, 1)), {
    frames: directory.frames,
    madeBy: [directory.text(tag.make), directory.text(tag.model)].filter((text) => text !== "").join(" "),
    doubts: orientation > 1 ? [sentence("orientation", { orientation })] : [],
  });
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
  const whiteIsLow = directory.number(tag.photometric, 1) === photometricKind.whiteIsLow;
  return { kind: "grey", width, height, bits, samples, rule: { ...plainRule, whiteIsLow, lowest: -half || 0 }, header };
}

async function readColour(directory: Directory, layout: Layout, header: FilmHeader): Promise<Film> {
  const { width, height, bits } = layout;
  const photometric = directory.number(tag.photometric, 1);
  const samples = layout.samples * layout.planes;
  const isPalette = photometric === photometricKind.palette && samples === 1 && bits <= 8;
  const isYcc = photometric === photometricKind.yCbCr && directory.number(tag.compression, 1) === jpegCompression;
  if (!isPalette && !((photometric === photometricKind.rgb || isYcc) && samples >= 3 && (bits === 8 || bits === 16)))
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
  const photometric = directory.number(tag.photometric, photometricKind.blackIsLow);
  const grey = photometric === photometricKind.blackIsLow || photometric === photometricKind.whiteIsLow;
  return (grey ? readGrey : readColour)(directory, layout, headerOf(directory));
}
