// DICOM films, PS3.10 and PS3.5.
import { checkSize, latin } from "./bytes.ts";
import { DicomDataSet, tagText, type DicomTag } from "./dicom_data_set.ts";
import { dicomHeader, greyRule } from "./dicom_header.ts";
import { frameBytes, transferSyntaxes, unpackPicture, type DicomPicture, type TransferSyntax, type UnpackedSamples } from "./dicom_picture.ts";
import { allTags, tags } from "./dicom_tags.ts";
import { filmPixelLimit, type Film, type GreyFilm } from "./film.ts";
import { inflate } from "./inflate.ts";
import { withAlpha } from "./jpeg.ts";
import { FilmError, sentence, type Sentence } from "./sentence.ts";

const preamble = 128;
const magic = "DICM";
const metaCoding = { explicitTypes: true, bigEndian: false };

function damaged(what: Sentence): FilmError {
  return new FilmError("dicomDamaged", { what });
}

function unreadable(what: Sentence): FilmError {
  return new FilmError("dicomUnreadable", { what });
}

function hasPreamble(bytes: Uint8Array): boolean {
  return latin(bytes, preamble, preamble + magic.length) === magic;
}

/** Whether the bytes begin as a DICOM file does, with or without the 128 bytes in front. */
export function beginsAsDicom(bytes: Uint8Array): boolean {
  if (hasPreamble(bytes)) return true;
  // Old files begin with their first element, of group 2 or 8, with or without its type.
  if (bytes.length < 16 || (bytes[0] !== 2 && bytes[0] !== 8) || bytes[1] !== 0 || bytes[3] !== 0) return false;
  return /^[A-Z]{2}/.test(latin(bytes, 4, 6)) || (bytes[6] === 0 && bytes[7] === 0);
}

/** Where the group of elements about the file itself ends, that begins at `from`: all of group 2. */
function behindMeta(bytes: Uint8Array, from: number): number {
  const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
  while (bytes.length - from >= 8 && bytes[from] === 2 && bytes[from + 1] === 0) {
    const longer = ["OB", "UN", "UT"].includes(latin(bytes, from + 4, from + 6));
    const header = longer ? 12 : 8;
    if (bytes.length - from < header) break;
    const length = longer ? view.getUint32(from + 8, true) : view.getUint16(from + 6, true);
    if (length > bytes.length - from - header) break;
    from += header + length;
  }
  return from;
}

function inflated(bytes: Uint8Array, from: number): Uint8Array {
  const limit = 16 * filmPixelLimit + 1_000_000;
  const parts: Uint8Array[] = [];
  let size = 0;
  const failed = damaged(sentence("dicomInflate", { byte: from }));
  try {
    const whole = inflate("raw", [bytes.subarray(from)], (part) => {
      parts.push(part.slice());
      size += part.length;
      return size <= limit;
    });
    if (!whole || size > limit || size === 0) throw failed;
  } catch {
    throw failed;
  }
  const content = new Uint8Array(size);
  let at = 0;
  for (const part of parts) {
    content.set(part, at);
    at += part.length;
  }
  return content;
}

/** What describes the pixels; throws what is wrong with it. */
function described(data: DicomDataSet): DicomPicture {
  const number = (tag: DicomTag, otherwise: number): number => data.number(tag) ?? otherwise;
  for (const needed of [tags.rows, tags.columns, tags.bitsAllocated, tags.pixelData])
    if (!data.find(needed)) throw unreadable(sentence("dicomMissing", { tag: tagText(needed) }));
  const samples = number(tags.samplesPerPixel, 1);
  const allocated = number(tags.bitsAllocated, 8);
  const stored = number(tags.bitsStored, allocated);
  const highBit = number(tags.highBit, stored - 1);
  const photometric = data.text(tags.photometricInterpretation) || (samples === 1 ? "MONOCHROME2" : "RGB");
  if (allocated !== 8 && allocated !== 16) throw unreadable(sentence("dicomAllocated", { bits: allocated }));
  if (stored < 1 || stored > allocated || highBit >= allocated || highBit < stored - 1)
    throw unreadable(sentence("dicomBits", { stored, highBit, allocated }));
  const grey = photometric.startsWith("MONOCHROME");
  if (samples !== (grey ? 1 : 3) || (!grey && allocated !== 8))
    throw unreadable(sentence("dicomKind", { photometric, samples, bits: allocated }));
  return {
    rows: number(tags.rows, 0),
    columns: number(tags.columns, 0),
    samples,
    frames: Math.trunc(Math.min(Math.max(data.decimal(tags.numberOfFrames) ?? 1, 1), 1e6)),
    allocated,
    stored,
    highBit,
    isSigned: number(tags.pixelRepresentation, 0) === 1,
    planes: number(tags.planarConfiguration, 0) === 1,
    photometric,
  };
}

/** Samples, of which each may stand anywhere in its 8 or 16 bits, as a count from the lowest value. */
function greySamples({ allocated, stored, highBit, isSigned }: DicomPicture, bytes: Uint8Array): Uint8Array | Uint16Array {
  const aligned = bytes.byteOffset % 2 === 0 ? bytes : bytes.slice();
  const wide = allocated === 16 ? new Uint16Array(aligned.buffer, aligned.byteOffset, aligned.length >> 1) : aligned;
  const shift = highBit + 1 - stored;
  const mask = (1 << stored) - 1;
  const half = isSigned ? 1 << (stored - 1) : 0;
  if (shift !== 0 || stored !== allocated || half !== 0)
    for (let i = 0; i < wide.length; ++i) wide[i] = (((wide[i] ?? 0) >> shift) & mask) ^ half;
  return stored <= 8 && allocated === 16 ? new Uint8Array(wide) : wide;
}

function colours(picture: DicomPicture, { bytes, planes, photometric }: UnpackedSamples): Uint8ClampedArray {
  if (photometric !== "YBR_FULL" && photometric !== "RGB") throw damaged(sentence("dicomColours", { photometric }));
  const pixels = picture.rows * picture.columns;
  if (!planes && photometric === "RGB") return withAlpha(bytes, pixels);
  const rgb = new Uint8ClampedArray(4 * pixels);
  const [step, channel] = planes ? [1, pixels] : [3, 1];
  for (let i = 0, at = 0, to = 0; i < pixels; ++i, at += step, to += 4) {
    const [one, two, three] = [bytes[at] ?? 0, bytes[at + channel] ?? 0, bytes[at + 2 * channel] ?? 0];
    rgb[to + 3] = 255;
    if (photometric === "RGB") {
      [rgb[to], rgb[to + 1], rgb[to + 2]] = [one, two, three];
    } else {
      const [cb, cr] = [two - 128, three - 128];
      rgb[to] = Math.floor(one + 1.402 * cr + 0.5);
      rgb[to + 1] = Math.floor(one - 0.344136 * cb - 0.714136 * cr + 0.5);
      rgb[to + 2] = Math.floor(one + 1.772 * cb + 0.5);
    }
  }
  return rgb;
}

async function filmOf(data: DicomDataSet, syntax: TransferSyntax): Promise<Film> {
  if (data.error) throw damaged(data.error);
  const picture = described(data);
  checkSize(picture.columns, picture.rows);
  const pixels = data.find(tags.pixelData);
  if (!pixels) throw unreadable(sentence("dicomMissing", { tag: tagText(tags.pixelData) }));
  const header = dicomHeader(data, syntax.compression, picture.frames);
  const size = { width: picture.columns, height: picture.rows, header };
  const unpacked = await unpackPicture(syntax, pixels, picture);
  if (picture.samples > 1) return { kind: "colour", ...size, bits: 8, samples: colours(picture, unpacked) };
  const samples = greySamples(picture, unpacked.bytes.subarray(0, frameBytes(picture)));
  const lowest = picture.isSigned ? -(1 << (picture.stored - 1)) : 0;
  return { kind: "grey", ...size, bits: picture.stored, samples, rule: greyRule(data, lowest) } satisfies GreyFilm;
}

export async function decodeDicom(bytes: Uint8Array): Promise<Film> {
  const meta = hasPreamble(bytes) ? preamble + magic.length : 0;
  const begin = behindMeta(bytes, meta);
  const metaTags = new Set([tags.transferSyntaxUid]);
  const named = new DicomDataSet(bytes.subarray(0, begin), meta, metaCoding, metaTags).text(tags.transferSyntaxUid);
  // A file that does not say how it is written shows it.
  const showsTypes = /^[A-Z]{2}/.test(latin(bytes, begin + 4, begin + 6));
  const uid = named || (showsTypes ? "1.2.840.10008.1.2.1" : "1.2.840.10008.1.2");
  const syntax = transferSyntaxes[uid];
  if (!syntax) throw unreadable(sentence("dicomSyntax", { uid: uid.slice(0, 64) }));
  const content = syntax.deflated ? inflated(bytes, begin) : bytes;
  return filmOf(new DicomDataSet(content, syntax.deflated ? 0 : begin, syntax.coding, allTags), syntax);
}
