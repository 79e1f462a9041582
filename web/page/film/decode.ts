// Films from bytes that may be anything; their content says what they are, not their name.
import { latin } from "./bytes.ts";
import { beginsAsDicom, decodeDicom } from "./dicom.ts";
import { filmFileLimit, type Film } from "./film.ts";
import { decodeJpeg } from "./jpeg.ts";
import { decodePng } from "./png.ts";
import { FilmError } from "./sentence.ts";
import { decodeTiff } from "./tiff.ts";

const tiffMarks = ["II*\0", "MM\0*", "II+\0", "MM\0+"];

/** Whether `decodeFilm` knows the format that bytes begin as; a few hundred of them are enough. */
export function beginsAsFilm(bytes: Uint8Array): boolean {
  return decoderOf(bytes) !== null;
}

function decoderOf(bytes: Uint8Array): ((bytes: Uint8Array) => Film | Promise<Film>) | null {
  const begin = latin(bytes, 0, 8);
  if (begin.startsWith("\xff\xd8\xff")) return decodeJpeg;
  if (begin === "\x89PNG\r\n\x1a\n") return decodePng;
  if (tiffMarks.includes(begin.slice(0, 4))) return decodeTiff;
  return beginsAsDicom(bytes) ? decodeDicom : null;
}

/** Throws FilmError: a file that ends early is refused, as half a radiograph must not be measured on. */
export async function decodeFilm(bytes: Uint8Array): Promise<Film> {
  if (bytes.length > filmFileLimit) throw new FilmError("tooLargeFile");
  const decode = decoderOf(bytes);
  if (!decode) throw new FilmError("otherFormat");
  try {
    return await decode(bytes);
  } catch (error) {
    // Typed arrays that find no room throw RangeError.
    if (error instanceof RangeError && /alloc|length/i.test(error.message)) throw new FilmError("noMemory");
    throw error;
  }
}
