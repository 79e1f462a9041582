// Drawn films as files: PNG of 8 bits, DICOM of 16.
import { zlibSync } from "fflate";
import type { DrawnFilm } from "./film.ts";

function bigEndian(value: number): Uint8Array {
  return Uint8Array.of(value >>> 24, value >>> 16, value >>> 8, value);
}

function joined(...parts: readonly Uint8Array[]): Uint8Array {
  const whole = new Uint8Array(parts.reduce((size, part) => size + part.length, 0));
  let at = 0;
  for (const part of parts) {
    whole.set(part, at);
    at += part.length;
  }
  return whole;
}

function checksum(bytes: Uint8Array): number {
  let sum = -1;
  for (const byte of bytes) {
    sum ^= byte;
    for (let i = 0; i < 8; ++i) sum = sum & 1 ? (sum >>> 1) ^ 0xedb88320 : sum >>> 1;
  }
  return ~sum >>> 0;
}

function chunk(name: string, body: Uint8Array): Uint8Array {
  const named = joined(new TextEncoder().encode(name), body);
  return joined(bigEndian(body.length), named, bigEndian(checksum(named)));
}

/** Grey of 8 bits, without a resolution. */
export function pngOf({ width, height, samples }: DrawnFilm): Uint8Array {
  const rows = new Uint8Array((width + 1) * height);
  for (let y = 0; y < height; ++y) {
    // Each byte as its difference from the one above, which packs noise best.
    const row = y * (width + 1);
    rows[row] = 2;
    for (let x = 0; x < width; ++x) {
      const above = y === 0 ? 0 : (samples[(y - 1) * width + x] ?? 0) >> 8;
      rows[row + 1 + x] = ((samples[y * width + x] ?? 0) >> 8) - above;
    }
  }
  const header = joined(bigEndian(width), bigEndian(height), Uint8Array.of(8, 0, 0, 0, 0));
  const signature = Uint8Array.of(0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a);
  return joined(signature, chunk("IHDR", header), chunk("IDAT", zlibSync(rows, { level: 3 })), chunk("IEND", new Uint8Array()));
}

function littleEndian(value: number, bytes: number): Uint8Array {
  return Uint8Array.from({ length: bytes }, (_, i) => value >>> (8 * i));
}

function element(group: number, name: number, type: string, value: Uint8Array): Uint8Array {
  const long = ["OB", "OW"].includes(type);
  const head = joined(littleEndian(group, 2), littleEndian(name, 2), new TextEncoder().encode(type));
  return joined(head, long ? joined(new Uint8Array(2), littleEndian(value.length, 4)) : littleEndian(value.length, 2), value);
}

export interface Told {
  /** Elements that are left out of the header where they are ''. */
  readonly name?: string;
  readonly birthDate?: string;
  readonly filmDate?: string;
}

/** 16 bits, explicit little endian; 0.11 mm on the detector and a magnification of 1.1, so 0.1 mm at the patient. */
export function dicomOf({ width, height, samples, mmPerPixel }: DrawnFilm, told: Told = {}): Uint8Array {
  const { name = "Mihon^Hanako=見本^花子", birthDate = "20010514", filmDate = "20250602" } = told;
  const text = (group: number, element_: number, type: string, value: string): Uint8Array => {
    const bytes = new TextEncoder().encode(value);
    return element(group, element_, type, joined(bytes, type === "UI" ? new Uint8Array(bytes.length % 2) : new Uint8Array(bytes.length % 2).fill(32)));
  };
  const number = (group: number, element_: number, value: number): Uint8Array => element(group, element_, "US", littleEndian(value, 2));
  const syntax = text(2, 0x10, "UI", "1.2.840.10008.1.2.1");
  const magnification = 1.1;
  const detectorMm = Number((mmPerPixel * magnification).toFixed(6));
  return joined(
    new Uint8Array(128),
    new TextEncoder().encode("DICM"),
    element(2, 0, "UL", littleEndian(syntax.length, 4)),
    syntax,
    text(8, 5, "CS", "ISO_IR 192"),
    text(8, 0x20, "DA", filmDate),
    text(0x10, 0x10, "PN", name),
    text(0x10, 0x20, "LO", "A-1"),
    text(0x10, 0x30, "DA", birthDate),
    text(0x10, 0x40, "CS", "F"),
    text(0x18, 0x1114, "DS", String(magnification)),
    text(0x18, 0x1164, "DS", `${detectorMm}\\${detectorMm}`),
    number(0x28, 2, 1),
    text(0x28, 4, "CS", "MONOCHROME2"),
    number(0x28, 0x10, height),
    number(0x28, 0x11, width),
    number(0x28, 0x100, 16),
    number(0x28, 0x101, 16),
    number(0x28, 0x102, 15),
    number(0x28, 0x103, 0),
    element(0x7fe0, 0x10, "OW", new Uint8Array(samples.buffer, samples.byteOffset, samples.byteLength)),
  );
}
