// The first picture of a DICOM file, out of whatever it is packed in.
import { Decoder as LosslessDecoder } from "jpeg-lossless-decoder-js";
import { viewOf } from "./bytes.ts";
import { codec, type CodecName, type UnpackedPicture } from "./codecs.ts";
import { dicomItems, type DicomCoding, type DicomElement } from "./dicom_data_set.ts";
import { jpegMarkers } from "./jpeg_markers.ts";
import { FilmError, sentence, type Sentence } from "./sentence.ts";

export interface TransferSyntax {
  /** "JPEG-LS lossless" */
  readonly compression: string;
  readonly packing: "none" | "rle" | "jpegLossless" | CodecName;
  readonly coding: DicomCoding;
  /** The data set as a whole. */
  readonly deflated: boolean;
}

function syntax(compression: string, packing: TransferSyntax["packing"], more: Partial<DicomCoding> = {}): TransferSyntax {
  const coding = { explicitTypes: true, bigEndian: false, ...more };
  return { compression, packing, coding, deflated: compression === "deflate" };
}

export const transferSyntaxes: Readonly<Record<string, TransferSyntax>> = {
  "1.2.840.10008.1.2": syntax("uncompressed", "none", { explicitTypes: false }),
  "1.2.840.10008.1.2.1": syntax("uncompressed", "none"),
  "1.2.840.10008.1.2.1.99": syntax("deflate", "none"),
  "1.2.840.10008.1.2.2": syntax("uncompressed", "none", { bigEndian: true }),
  "1.2.840.10008.1.2.4.50": syntax("JPEG baseline", "jpeg"),
  "1.2.840.10008.1.2.4.51": syntax("JPEG extended", "jpeg"),
  "1.2.840.10008.1.2.4.57": syntax("JPEG lossless", "jpegLossless"),
  "1.2.840.10008.1.2.4.70": syntax("JPEG lossless", "jpegLossless"),
  "1.2.840.10008.1.2.4.80": syntax("JPEG-LS lossless", "jpegLs"),
  "1.2.840.10008.1.2.4.81": syntax("JPEG-LS", "jpegLs"),
  "1.2.840.10008.1.2.4.90": syntax("JPEG 2000 lossless", "jpeg2000"),
  "1.2.840.10008.1.2.4.91": syntax("JPEG 2000", "jpeg2000"),
  "1.2.840.10008.1.2.5": syntax("RLE", "rle"),
};

/** How the pixels are described; all of it checked. */
export interface DicomPicture {
  readonly rows: number;
  readonly columns: number;
  readonly samples: number;
  readonly frames: number;
  /** Bits of a sample: 8 or 16, those that are used, and the highest of these. */
  readonly allocated: number;
  readonly stored: number;
  readonly highBit: number;
  readonly isSigned: boolean;
  /** Of colours one behind the other. */
  readonly planes: boolean;
  readonly photometric: string;
}

/** The samples as the picture describes them, the low byte first; unpacking may change the kind of colours. */
export interface UnpackedSamples {
  readonly bytes: Uint8Array;
  readonly planes: boolean;
  readonly photometric: string;
}

export function frameBytes(picture: DicomPicture): number {
  return (picture.rows * picture.columns * picture.samples * picture.allocated) / 8;
}

function damaged(what: Sentence): FilmError {
  return new FilmError("dicomDamaged", { what });
}

/** The first picture's samples as they stand in an uncompressed file. */
function copied(pixels: DicomElement, picture: DicomPicture): UnpackedSamples {
  const needed = frameBytes(picture);
  const found = pixels.value.length;
  if (found < needed) throw damaged(sentence("dicomShort", { found, needed, byte: pixels.at }));
  const bytes = pixels.value.slice(0, needed);
  if (picture.allocated === 16 && pixels.coding.bigEndian)
    for (let i = 0; i + 1 < needed; i += 2) [bytes[i], bytes[i + 1]] = [bytes[i + 1] ?? 0, bytes[i] ?? 0];
  return { bytes, planes: picture.planes, photometric: picture.photometric };
}

/** Unpacks a segment of RLE into every `step`-th byte from `at`, `count` of them. Whether it held as many. */
function unpackSegment(packed: Uint8Array, to: Uint8Array, at: number, step: number, count: number): boolean {
  let from = 0;
  while (count > 0 && from < packed.length) {
    const code = ((packed[from++] ?? 0) << 24) >> 24;
    if (code === -128) continue;
    const repeated = code < 0;
    const length = repeated ? 1 - code : code + 1;
    if (packed.length - from < (repeated ? 1 : length)) return false;
    const taken = Math.min(length, count); // the last run may be padded
    for (let i = 0; i < taken; ++i, at += step) to[at] = packed[repeated ? from : from + i] ?? 0;
    from += repeated ? 1 : length;
    count -= taken;
  }
  return count === 0;
}

/** Run-length encoding as DICOM PS3.5 annex G has it: a segment for each byte of a pixel, the high byte first. */
function unpackRle(frame: Uint8Array, picture: DicomPicture): UnpackedSamples | Sentence {
  const header = 64;
  const sampleBytes = picture.allocated / 8;
  const segments = picture.samples * sampleBytes;
  const view = viewOf(frame);
  if (frame.length < header || view.getUint32(0, true) !== segments || segments > 15)
    return sentence("rleSegments", { segments });
  const bytes = new Uint8Array(frameBytes(picture));
  for (let segment = 0; segment < segments; ++segment) {
    const from = view.getUint32(4 + 4 * segment, true);
    const end = segment + 1 < segments ? view.getUint32(8 + 4 * segment, true) : frame.length;
    if (from < header || from > end || end > frame.length)
      return sentence("rleOutside", { segment, bytes: frame.length });
    const at = Math.floor(segment / sampleBytes) * sampleBytes + sampleBytes - 1 - (segment % sampleBytes);
    if (!unpackSegment(frame.subarray(from, end), bytes, at, segments, picture.rows * picture.columns))
      return sentence("rleEnds", { segment });
  }
  return { bytes, planes: false, photometric: picture.photometric };
}

interface StreamKind {
  readonly width: number;
  readonly height: number;
  readonly channels: number;
  readonly bits: number;
  readonly ended: boolean;
}

/** What a JPEG 2000 code stream (ITU-T T.800 annex A.5.1) says of its picture, in its boxes (annex I) or bare. */
function jpeg2000Kind(bytes: Uint8Array): StreamKind | null {
  const view = viewOf(bytes);
  let at = 0;
  while (bytes.length - at >= 52 && view.getUint32(at) !== 0xff4fff51) {
    const box = view.getUint32(at);
    if (at === 0 && view.getUint32(4) !== 0x6a502020) return null; // "jP  "
    if (view.getUint32(at + 4) === 0x6a703263) at += box === 1 ? 16 : 8; // "jp2c"
    else if (box >= 8) at += box;
    else return null;
  }
  if (bytes.length - at < 52) return null;
  const size = (offset: number): number => view.getUint32(at + offset);
  let end = bytes.length;
  while (end > 2 && bytes[end - 1] === 0) --end; // fragments are padded
  return {
    width: size(8) - size(16),
    height: size(12) - size(20),
    channels: view.getUint16(at + 40),
    bits: (view.getUint8(at + 42) & 0x7f) + 1,
    ended: bytes[end - 2] === 0xff && bytes[end - 1] === 0xd9,
  };
}

function unpackLossless(bytes: Uint8Array, kind: StreamKind): UnpackedPicture {
  const decoder = new LosslessDecoder();
  const whole = decoder.decode(bytes.slice().buffer, 0, bytes.length, kind.bits > 8 ? 2 : 1);
  if (decoder.yLoc < kind.height) throw new Error("it ends early");
  return { ...kind, planes: false, bytes: new Uint8Array(whole.buffer, whole.byteOffset, whole.byteLength) };
}

/** By a codec, but only where the stream is of the picture's size, so that no memory is taken for another. */
async function unpackStream(packing: CodecName | "jpegLossless", bytes: Uint8Array, picture: DicomPicture): Promise<UnpackedSamples | Sentence> {
  const kind = packing === "jpeg2000" ? jpeg2000Kind(bytes) : jpegMarkers(bytes);
  if (!kind?.ended) return sentence("packedDamaged");
  const { width, height, channels, bits } = kind;
  if (width !== picture.columns || height !== picture.rows || channels < picture.samples || bits > picture.allocated)
    return sentence("packedOther", { width, height, samples: channels, bits });
  let unpacked: UnpackedPicture;
  try {
    unpacked = packing === "jpegLossless" ? unpackLossless(bytes, kind) : (await codec(packing))(bytes);
  } catch {
    return sentence("packedDamaged");
  }
  const taken = atDepth(unpacked, picture);
  if (taken.length < frameBytes(picture)) return sentence("packedDamaged");
  const colours = packing === "jpeg" || packing === "jpeg2000" ? "RGB" : picture.photometric;
  const photometric = picture.samples > 1 ? colours : picture.photometric;
  return { bytes: taken, planes: unpacked.planes, photometric };
}

/** Samples of 8 bits in places of 16, where the header has such. */
function atDepth(unpacked: UnpackedPicture, picture: DicomPicture): Uint8Array {
  if (picture.allocated === 8 || unpacked.bits > 8) return unpacked.bytes;
  return new Uint8Array(new Uint16Array(unpacked.bytes).buffer);
}

function joined(parts: readonly Uint8Array[]): Uint8Array {
  const whole = new Uint8Array(parts.reduce((length, part) => length + part.length, 0));
  let at = 0;
  for (const part of parts) {
    whole.set(part, at);
    at += part.length;
  }
  return whole;
}

/** The first picture, whose size has been allowed. */
export async function unpackPicture(
  { packing, compression }: TransferSyntax,
  pixels: DicomElement,
  picture: DicomPicture,
): Promise<UnpackedSamples> {
  if (!pixels.noLength) {
    if (packing === "none") return copied(pixels, picture);
    throw damaged(sentence("dicomOneValue", { byte: pixels.at }));
  }
  const { items, error } = dicomItems(pixels);
  if (error) throw damaged(error);
  const fragments = items.slice(1); // behind their table
  const [first] = fragments;
  if (!first) throw damaged(sentence("dicomNoFragment", { byte: pixels.at }));
  if (packing === "none") throw damaged(sentence("dicomFragments"));
  const unpacked =
    packing === "rle"
      ? unpackRle(first, picture) // one a picture
      : await unpackStream(packing, picture.frames > 1 || fragments.length === 1 ? first : joined(fragments), picture);
  if ("key" in unpacked)
    throw damaged(sentence("dicomPacked", { compression, byte: pixels.at, what: unpacked }));
  return unpacked;
}
