// What the readers of bytes from outside share.
import { filmPixelLimit, filmSideLimit, type DicomScale, type FilmHeader, type FilmPatient } from "./film.ts";
import { FilmError } from "./sentence.ts";

/** Throws where a picture is larger than may be used; asked before memory is taken for it. */
export function checkSize(width: number, height: number): void {
  const allowed = width > 0 && height > 0 && width <= filmSideLimit && height <= filmSideLimit;
  if (!allowed || width * height > filmPixelLimit) throw new FilmError("size", { width, height });
}

/** Text of bytes, a character each. */
export function latin(bytes: Uint8Array, from = 0, to = bytes.length): string {
  let text = "";
  for (let i = from; i < Math.min(to, bytes.length); ++i) text += String.fromCharCode(bytes[i] ?? 0);
  return text;
}

export function viewOf(bytes: Uint8Array): DataView {
  return new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
}

export const noScale: DicomScale = {
  imagerSpacing: null,
  pixelSpacing: null,
  calibrationType: "",
  calibrationDescription: "",
  magnification: null,
  detectorDistanceMm: null,
  patientDistanceMm: null,
  aspect: null,
};

const noPatient: FilmPatient = { name: "", id: "", sex: "", birthDate: "", filmDate: "", laterality: "" };

/** The header of a picture that knows no patient. */
export function pictureHeader(
  format: FilmHeader["format"],
  compression: string,
  rest: Partial<FilmHeader> = {},
): FilmHeader {
  const empty = { frames: 1, scale: noScale, patient: noPatient, madeBy: "", doubts: [] };
  return { format, compression, ...empty, ...rest };
}

/** What grey samples mean where a file says nothing of it. */
export const plainRule = {
  whiteIsLow: false,
  lowest: 0,
  slope: 1,
  intercept: 0,
  modality: null,
  voi: null,
  windows: [],
} as const;
