// Inflating bytes that may be anything, piece by piece, so that a small file can't fill the memory.
import { Inflate, Unzlib } from "fflate";

const pieceBytes = 1 << 15; // becomes at most 32 MiB

/**
 * Inflates `parts`, one behind the other, and gives `take` what comes out. Ends when `take` says that it has enough:
 * false. Throws an Error where the bytes are damaged; gives whether the stream came to its own end or `take` had enough.
 */
export function inflate(
  form: "zlib" | "raw",
  parts: Iterable<Uint8Array>,
  take: (bytes: Uint8Array) => boolean,
): boolean {
  let ended = false;
  let enough = false;
  const stream = new (form === "zlib" ? Unzlib : Inflate)((bytes, final) => {
    if (!enough && bytes.length > 0 && !take(bytes)) enough = true;
    ended ||= final;
  });
  for (const part of parts) {
    for (let at = 0; at < part.length; at += pieceBytes) {
      if (enough || ended) return true;
      stream.push(part.subarray(at, at + pieceBytes));
    }
  }
  if (!enough && !ended) stream.push(new Uint8Array(), true);
  return ended || enough;
}

/** Inflates into `target` until it is full; gives how many bytes of it are filled. Damage ends it. */
export function inflateInto(form: "zlib" | "raw", packed: Uint8Array, target: Uint8Array): number {
  let filled = 0;
  try {
    inflate(form, [packed], (bytes) => {
      target.set(bytes.subarray(0, target.length - filled), filled);
      filled = Math.min(target.length, filled + bytes.length);
      return filled < target.length;
    });
  } catch {
    // What came before the damage is counted.
  }
  return filled;
}
