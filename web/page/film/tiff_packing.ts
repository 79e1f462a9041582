// How the strips and tiles of TIFF pictures are packed, but for JPEG: TIFF 6.0, sections 9, 13 and 14.
import { decompress as unpackZstandard } from "fzstd";
import { inflateInto } from "./inflate.ts";

/** Section 9. Gives how many bytes of `to` are filled. */
function unpackBits(packed: Uint8Array, to: Uint8Array): number {
  let filled = 0;
  for (let at = 0; at < packed.length && filled < to.length; ) {
    const code = ((packed[at++] ?? 0) << 24) >> 24;
    if (code === -128) continue;
    const length = Math.min(code < 0 ? 1 - code : code + 1, to.length - filled);
    if (code < 0) {
      to.fill(packed[at++] ?? 0, filled, filled + length);
    } else {
      if (packed.length - at < length) return filled;
      to.set(packed.subarray(at, at + length), filled);
      at += code + 1;
    }
    filled += length;
  }
  return filled;
}

/** Section 13: codes of 9 to 12 bits, the highest bit first, each one bit longer one code early. */
function unpackLzw(packed: Uint8Array, to: Uint8Array): number {
  const clear = 256;
  const end = 257;
  const mostCodes = 4096;
  // A string of the table is one of the bytes that were written already: where it begins and how long it is.
  const from = new Uint32Array(mostCodes);
  const length = new Uint32Array(mostCodes);
  let next = end + 1;
  let width = 9;
  let before = -1;
  let filled = 0;
  let bits = 0;
  let held = 0;
  for (let at = 0; filled < to.length; ) {
    while (held < width && at < packed.length) {
      bits = ((bits << 8) | (packed[at++] ?? 0)) & 0xffffff;
      held += 8;
    }
    if (held < width) return filled;
    const code = (bits >> (held - width)) & ((1 << width) - 1);
    held -= width;
    if (code === end) return filled;
    if (code === clear) {
      next = end + 1;
      width = 9;
      before = -1;
      continue;
    }
    if (code > next || (code > end && before < 0)) return filled;
    const start = filled;
    const lengthBefore = before < 0 ? 0 : before < clear ? 1 : (length[before] ?? 0);
    if (code < clear) {
      to[filled++] = code;
    } else {
      // One that is not known yet is the string before and its first byte, which lie just behind.
      const begin = code < next ? (from[code] ?? 0) : start - lengthBefore;
      const count = Math.min(code < next ? (length[code] ?? 0) : lengthBefore + 1, to.length - filled);
      for (let i = 0; i < count; ++i) to[filled++] = to[begin + i] ?? 0;
    }
    if (before >= 0 && next < mostCodes) {
      from[next] = start - lengthBefore;
      length[next] = lengthBefore + 1;
      ++next;
    }
    if (next + 1 >= 1 << width && width < 12) ++width;
    before = code;
  }
  return filled;
}

const codes: Readonly<Record<number, { readonly name: string; readonly unpack?: (packed: Uint8Array, to: Uint8Array) => number }>> = {
  1: { name: "uncompressed", unpack: copy },
  2: { name: "CCITT RLE" },
  3: { name: "CCITT G3" },
  4: { name: "CCITT G4" },
  5: { name: "LZW", unpack: unpackLzw },
  6: { name: "JPEG (old kind)" },
  7: { name: "JPEG" },
  8: { name: "deflate", unpack: unpackDeflate },
  32773: { name: "PackBits", unpack: unpackBits },
  32946: { name: "deflate", unpack: unpackDeflate },
  34925: { name: "LZMA" },
  50000: { name: "Zstandard", unpack: unpackZstd },
  50001: { name: "WebP" },
};

function copy(packed: Uint8Array, to: Uint8Array): number {
  const count = Math.min(packed.length, to.length);
  to.set(packed.subarray(0, count));
  return count;
}

function unpackDeflate(packed: Uint8Array, to: Uint8Array): number {
  return inflateInto("zlib", packed, to);
}

function unpackZstd(packed: Uint8Array, to: Uint8Array): number {
  try {
    return unpackZstandard(packed, to).length;
  } catch {
    return 0;
  }
}

export function compressionName(code: number): string {
  return codes[code]?.name ?? `compression ${code}`;
}

/** What unpacks into `to` and gives how many of its bytes are filled; null for what is not read here. */
export function unpacker(code: number): ((packed: Uint8Array, to: Uint8Array) => number) | null {
  return codes[code]?.unpack ?? null;
}
