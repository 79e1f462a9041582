// The elements of a DICOM file. Only its own level is read: what lies in sequences is stepped over, however deep it
// goes, and read when it is asked for.
import { latin, viewOf } from "./bytes.ts";
import { sentence, type Sentence } from "./sentence.ts";

/** Group, then element: 0x00280010. */
export type DicomTag = number;

/** "(0028,0010)" */
export function tagText(tag: DicomTag): string {
  const digits = tag.toString(16).toUpperCase().padStart(8, "0");
  return `(${digits.slice(0, 4)},${digits.slice(4)})`;
}

/** How a data set is written. */
export interface DicomCoding {
  /** Each element names the type of its value. */
  readonly explicitTypes: boolean;
  readonly bigEndian: boolean;
}

export interface DicomElement {
  /** Of its header in the bytes. */
  readonly at: number;
  /** Of one without a length: all up to its delimiter. */
  readonly value: Uint8Array;
  /** A sequence, or pixels in fragments. */
  readonly noLength: boolean;
  /** Of the value. */
  readonly coding: DicomCoding;
}

const item = 0xfffee000;
const itemEnd = 0xfffee00d;
const sequenceEnd = 0xfffee0dd;
const pixelData = 0x7fe00010;
const noLength = 0xffffffff;
const longLengths = ["OB", "OD", "OF", "OL", "OV", "OW", "SQ", "SV", "UC", "UN", "UR", "UT", "UV"];

interface Header {
  readonly tag: DicomTag;
  /** "US"; "" where none is named. */
  readonly type: string;
  readonly length: number;
  readonly at: number;
}

/** Goes from element to element of bytes that may be anything. */
class Walk {
  error: Sentence | null = null;
  private readonly view: DataView;
  private at: number;
  private coding: DicomCoding;
  private readonly bytes: Uint8Array;

  constructor(bytes: Uint8Array, from: number, coding: DicomCoding) {
    this.bytes = bytes;
    this.view = viewOf(bytes);
    this.at = from;
    this.coding = coding;
  }

  /** The next header, whose value is not stepped over yet; null at the end or when there is an error. */
  header(): Header | null {
    if (this.error || this.at === this.bytes.length) return null;
    const at = this.at;
    const rest = this.bytes.length - at;
    if (rest < 8) return this.failed(sentence("dicomHeaderEnds", { byte: at }));
    const little = !this.coding.bigEndian;
    const tag = this.view.getUint16(at, little) * 0x10000 + this.view.getUint16(at + 2, little);
    let type = "";
    let size = 8;
    let length: number;
    if (!this.coding.explicitTypes || tag >>> 16 === item >>> 16) {
      length = this.view.getUint32(at + 4, little);
    } else {
      type = latin(this.bytes, at + 4, at + 6);
      if (!longLengths.includes(type)) {
        length = this.view.getUint16(at + 6, little);
      } else {
        if (rest < 12) return this.failed(sentence("dicomHeaderOfEnds", { tag: tagText(tag), byte: at }));
        length = this.view.getUint32(at + 8, little);
        size = 12;
      }
    }
    if (length !== noLength && length > rest - size)
      return this.failed(sentence("dicomLength", { tag: tagText(tag), length, found: rest - size, byte: at }));
    this.at += size;
    return { tag, type, length, at };
  }

  /** The value behind a header, and past it. */
  value(header: Header): Uint8Array {
    const from = this.at;
    if (header.length === noLength) return this.bytes.subarray(from, this.pastDelimiter(header));
    this.at += header.length;
    return this.bytes.subarray(from, this.at);
  }

  /** A sequence of unknown type is written without types wherever it stands. */
  codingBehind(header: Header): DicomCoding {
    const untyped = header.type === "UN" && header.length === noLength;
    return untyped ? { explicitTypes: false, bigEndian: false } : this.coding;
  }

  private failed(error: Sentence): null {
    this.error ??= error;
    return null;
  }

  /**
   * Steps over all that is open, counting instead of descending: files can nest as deep as they are long. Gives where
   * the value ended.
   */
  private pastDelimiter(opened: Header): number {
    const outer = this.coding;
    this.coding = this.codingBehind(opened);
    let depth = 1;
    let withoutTypes = opened.type === "UN" ? 1 : 0;
    for (let found = this.header(); found; found = this.header()) {
      if (found.tag === itemEnd || found.tag === sequenceEnd) {
        if (depth === withoutTypes) {
          this.coding = outer;
          withoutTypes = 0;
        }
        if (--depth === 0) {
          this.coding = outer;
          return found.at;
        }
      } else if (found.length !== noLength) {
        this.at += found.length;
      } else {
        ++depth;
        if (found.type === "UN" && withoutTypes === 0) {
          this.coding = this.codingBehind(found);
          withoutTypes = depth;
        }
      }
    }
    this.failed(sentence("dicomNoEnd", { tag: tagText(opened.tag), from: opened.at, byte: this.at }));
    this.coding = outer;
    return this.at;
  }
}

export class DicomDataSet {
  readonly error: Sentence | null;
  private readonly elements = new Map<DicomTag, DicomElement>();

  /**
   * Reads from `from` up to the pixels, or to the end. Of elements that come twice the first counts. Only those of
   * `wanted` are kept, so that a file can't make millions of them.
   */
  constructor(bytes: Uint8Array, from: number, coding: DicomCoding, wanted: ReadonlySet<DicomTag>) {
    const walk = new Walk(bytes, from, coding);
    for (let header = walk.header(); header; header = walk.header()) {
      const inner = walk.codingBehind(header);
      const value = walk.value(header);
      if (wanted.has(header.tag) && !this.elements.has(header.tag))
        this.elements.set(header.tag, { at: header.at, value, noLength: header.length === noLength, coding: inner });
      if (header.tag === pixelData) break;
    }
    this.error = walk.error;
  }

  find(tag: DicomTag): DicomElement | null {
    return this.elements.get(tag) ?? null;
  }

  /** Without the spaces and NULs round it, a character a byte; "" where there is none. */
  text(tag: DicomTag): string {
    const element = this.find(tag);
    return element ? latin(element.value).replace(/^[ \0\t]+|[ \0\t]+$/g, "") : "";
  }

  /** US; null where the element is missing or too short. */
  number(tag: DicomTag): number | null {
    const element = this.find(tag);
    if (!element || element.value.length < 2) return null;
    return viewOf(element.value).getUint16(0, !element.coding.bigEndian);
  }

  /** DS, IS: all, none when one is no number. */
  decimals(tag: DicomTag): readonly number[] {
    const parts = this.text(tag).split("\\");
    if (parts.at(-1) === "") parts.pop();
    const words = parts.map((part) => part.replace(/^[ +]+| +$/g, ""));
    const numbers = words.map((word) => (/^-?(\d+\.?\d*|\.\d+)([eE][+-]?\d+)?$/.test(word) ? Number(word) : NaN));
    return numbers.every(Number.isFinite) ? numbers : [];
  }

  /** The first of them. */
  decimal(tag: DicomTag): number | null {
    return this.decimals(tag)[0] ?? null;
  }

  /** Null when the sequence is missing or has no item. */
  firstItem(sequence: DicomTag, wanted: ReadonlySet<DicomTag>): DicomDataSet | null {
    const element = this.find(sequence);
    const first = element && dicomItems(element).items[0];
    return element && first ? new DicomDataSet(first, 0, element.coding, wanted) : null;
  }
}

/** The parts that an element without a length holds, in their order: items of a sequence, fragments of pixels. */
export function dicomItems(element: DicomElement): { items: Uint8Array[]; error: Sentence | null } {
  const items: Uint8Array[] = [];
  const walk = new Walk(element.value, 0, element.coding);
  for (let header = walk.header(); header; header = walk.header()) {
    const value = walk.value(header);
    if (header.tag === item) items.push(value);
  }
  return { items, error: walk.error };
}
