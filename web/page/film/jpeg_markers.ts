// The markers of a JPEG stream, ITU-T T.81 annex B; those of JPEG-LS (T.87) stand in the same way.
import { viewOf } from "./bytes.ts";

export interface JpegMarkers {
  /** 0xC0 baseline, 0xC2 progressive, 0xC3 lossless, 0xF7 JPEG-LS. */
  readonly process: number;
  readonly bits: number;
  readonly width: number;
  readonly height: number;
  readonly channels: number;
  readonly scans: number;
  /** Whether the stream has its end mark: one that ends early lacks pixels. */
  readonly ended: boolean;
}

function isFrame(marker: number): boolean {
  return (marker >= 0xc0 && marker <= 0xcf && marker !== 0xc4 && marker !== 0xc8 && marker !== 0xcc) || marker === 0xf7;
}

/** Nothing when the bytes are no JPEG or end before they say how large the picture is. */
export function jpegMarkers(bytes: Uint8Array): JpegMarkers | null {
  const view = viewOf(bytes);
  if (bytes.length < 4 || view.getUint16(0) !== 0xffd8) return null;
  let frame: Omit<JpegMarkers, "scans" | "ended"> | null = null;
  let scans = 0;
  let ended = false;
  for (let at = 2; at + 1 < bytes.length; ) {
    // Within a scan 0xFF stands before 0 (JPEG-LS: before less than 0x80) or a restart; elsewhere it may be repeated.
    const marker = bytes[at + 1] ?? 0;
    const inScan = bytes[at] !== 0xff || marker < 0x80 || (marker >= 0xd0 && marker <= 0xd7);
    if (inScan || marker === 0xff) {
      const next = bytes.indexOf(0xff, at + 1);
      if (next < 0) break;
      at = next;
      continue;
    }
    if (marker === 0xd9) {
      ended = true;
      break;
    }
    if (at + 4 > bytes.length) break;
    const length = view.getUint16(at + 2);
    if (length < 2 || at + 2 + length > bytes.length) break;
    const segment = new DataView(view.buffer, view.byteOffset + at + 4, length - 2);
    if (isFrame(marker) && segment.byteLength >= 6 && !frame) {
      frame = {
        process: marker,
        bits: segment.getUint8(0),
        height: segment.getUint16(1),
        width: segment.getUint16(3),
        channels: segment.getUint8(5),
      };
    } else if (marker === 0xda) {
      ++scans;
    }
    at += 2 + length;
  }
  return frame && { ...frame, scans, ended };
}
