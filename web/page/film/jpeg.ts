// JPEG pictures.
import { checkSize, pictureHeader, plainRule } from "./bytes.ts";
import { codec, type UnpackedPicture } from "./codecs.ts";
import type { Film } from "./film.ts";
import { jpegMarkers } from "./jpeg_markers.ts";
import { FilmError, sentence } from "./sentence.ts";

const progressive = 0xc2;
const passLimit = 200; // a small file can hold thousands of passes over a large picture

/** Red, green and blue of side by side samples, with an alpha of 255. */
export function withAlpha(rgb: Uint8Array, pixels: number): Uint8ClampedArray {
  const colours = new Uint8ClampedArray(4 * pixels);
  for (let i = 0, from = 0, to = 0; i < pixels; ++i) {
    colours[to++] = rgb[from++] ?? 0;
    colours[to++] = rgb[from++] ?? 0;
    colours[to++] = rgb[from++] ?? 0;
    colours[to++] = 255;
  }
  return colours;
}

export async function decodeJpeg(bytes: Uint8Array): Promise<Film> {
  const markers = jpegMarkers(bytes);
  if (!markers) throw new FilmError("jpegDamaged", { place: sentence("inHeader") });
  checkSize(markers.width, markers.height);
  const readable = markers.bits === 8 && (markers.channels === 1 || markers.channels === 3);
  if (!readable || markers.scans > passLimit) throw new FilmError("jpegDamaged", { place: sentence("inHeader") });
  if (!markers.ended) throw new FilmError("jpegEndsEarly");
  let picture: UnpackedPicture;
  try {
    picture = (await codec("jpeg"))(bytes);
  } catch {
    const place = sentence("atRow", { row: 0, rows: markers.height });
    throw new FilmError("jpegDamaged", { place });
  }
  const { width, height } = picture;
  const compression = markers.process === progressive ? "JPEG progressive" : "JPEG";
  const header = pictureHeader("JPEG", compression);
  if (picture.channels === 1)
    return { kind: "grey", width, height, bits: 8, samples: picture.bytes, rule: plainRule, header };
  return { kind: "colour", width, height, bits: 8, samples: withAlpha(picture.bytes, width * height), header };
}
