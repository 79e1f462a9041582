// X-rays and photographs as their files store them, and what their headers say.
import type { Sentence } from "./sentence.ts";

/** Which greys a person is to see: those within `width` of values round `centre`, from black to white. */
export interface GreyWindow {
  readonly centre: number;
  readonly width: number;
  /** As DICOM defines them, PS3.3 C.11.2.1.2 and C.11.2.1.3. */
  readonly shape: "linear" | "linear_exact" | "sigmoid";
}

/** A table of DICOM: what a value becomes. Values below the first and above the last become what those become. */
export interface GreyTable {
  /** The value of the first entry. */
  readonly first: number;
  /** Of an entry, 1 to 16. */
  readonly bits: number;
  /** At least one. */
  readonly entries: Uint16Array;
}

/**
 * What grey samples mean. A sample becomes a stored value (by `lowest`), that a value of the device (by `modality`, else
 * slope and intercept), and that a brightness (by a window or `voi`).
 */
export interface GreyRule {
  /** The lowest brightness is white: MONOCHROME1, MinIsWhite. */
  readonly whiteIsLow: boolean;
  /** The stored value of sample 0; below 0 where the file's samples are signed. */
  readonly lowest: number;
  readonly slope: number;
  readonly intercept: number;
  readonly modality: GreyTable | null;
  readonly voi: GreyTable | null;
  /** That the file proposes; the first is its default. */
  readonly windows: readonly GreyWindow[];
}

/** Between the centres of neighbouring pixels, in mm. DICOM gives the distance of rows first. */
export interface PixelSpacing {
  readonly downMm: number;
  readonly acrossMm: number;
}

/** The elements of a DICOM header that say how large a pixel is, each as its tag has it; null where it is missing. */
export interface DicomScale {
  readonly imagerSpacing: PixelSpacing | null; // (0018,1164), in the plane of the detector
  readonly pixelSpacing: PixelSpacing | null; // (0028,0030)
  readonly calibrationType: string; // (0028,0A02): GEOMETRY, FIDUCIAL, or ""
  readonly calibrationDescription: string; // (0028,0A04)
  readonly magnification: number | null; // (0018,1114)
  readonly detectorDistanceMm: number | null; // (0018,1110), from the source
  readonly patientDistanceMm: number | null; // (0018,1111), likewise
  readonly aspect: { readonly down: number; readonly across: number } | null; // (0028,0034), a ratio
}

/** Dates are YYYYMMDD as DICOM has them; each text is "" where the header has none. */
export interface FilmPatient {
  /** "YAMADA TARO", or in the person's own script where the header has both. */
  readonly name: string;
  readonly id: string;
  /** "M", "F", "O". */
  readonly sex: string;
  readonly birthDate: string;
  /** Of the acquisition, else the series, else the study. */
  readonly filmDate: string;
  readonly laterality: string;
}

/** What a film's file says beside its pixels. Nothing here is judged yet. */
export interface FilmHeader {
  readonly format: "JPEG" | "PNG" | "TIFF" | "DICOM";
  /** "uncompressed", "LZW", "JPEG 2000 lossless": terms that are the same in every language. */
  readonly compression: string;
  /** Pictures in the file, of which the film is the first. */
  readonly frames: number;
  readonly scale: DicomScale;
  readonly patient: FilmPatient;
  /** Manufacturer and model. */
  readonly madeBy: string;
  /** What the reader had to leave out or take for granted. */
  readonly doubts: readonly Sentence[];
}

/**
 * Pixels come as the file stores them, rows from the top: an orientation noted in the file is not applied, as landmarks
 * are counted in stored pixels. Samples are below 2^bits: a Uint8Array up to 8 bits, else a Uint16Array.
 */
export interface GreyFilm {
  readonly kind: "grey";
  readonly width: number;
  readonly height: number;
  readonly bits: number;
  readonly samples: Uint8Array | Uint16Array;
  readonly rule: GreyRule;
  readonly header: FilmHeader;
}

/** Red, green, blue and alpha (not multiplied), 8 bits each. */
export interface ColourFilm {
  readonly kind: "colour";
  readonly width: number;
  readonly height: number;
  readonly bits: 8;
  readonly samples: Uint8ClampedArray;
  readonly header: FilmHeader;
}

export type Film = GreyFilm | ColourFilm;

/** A radiograph has 5 to 30 million pixels; no memory is taken for more than the limit, whatever a file says. */
export const filmPixelLimit = 100_000_000;
export const filmSideLimit = 32_767;
export const filmFileLimit = 1_000_000_000;

/**
 * Where a pixel has its width. The patient stands between source and detector, so every film is enlarged: in a
 * cephalostat the median plane by 8 to 15 %.
 *  patient: the magnification is out of the width
 *  detector: it is still in it, and lengths come out too long
 *  unknown: the file doesn't say
 */
export type FilmPlane = "patient" | "detector" | "unknown";

/** How wide a pixel of a film is, and who says so; else what the file says against itself, or that it says nothing. */
export type FilmScale =
  | {
      readonly kind: "known";
      readonly mmPerPixel: number;
      readonly plane: FilmPlane;
      readonly source: Sentence;
      readonly doubts: readonly Sentence[];
    }
  | { readonly kind: "contradictory"; readonly error: Sentence; readonly doubts: readonly Sentence[] }
  | { readonly kind: "none"; readonly doubts: readonly Sentence[] };

/** What a file came to. */
export type ReadFilm = { readonly kind: "film"; readonly film: Film } | { readonly kind: "error"; readonly error: Sentence };
