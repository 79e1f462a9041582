// How wide a pixel of a film is at the patient, as far as the film's file says it: the rules of `cephtool film`.
import type { DicomScale, FilmHeader, FilmPlane, FilmScale, PixelSpacing } from "./film.ts";
import { sentence, type Sentence, type SentenceKey } from "./sentence.ts";

const squareWithin = 0.001; // 0.1 mm in a face of 100 mm
const sameWithin = 0.01; // headers round their factors to two or three digits
const mostUsualMagnification = 1.5;

function differ(one: number, other: number, part: number): boolean {
  return !(Math.abs(one - other) <= part * Math.max(Math.abs(one), Math.abs(other)));
}

function isKnown(calibrationType: string): boolean {
  return calibrationType === "GEOMETRY" || calibrationType === "FIDUCIAL";
}

/** What a film is enlarged by, and who says so: a ratio, so that 0.11 mm * 1500 / 1650 comes to 0.1. */
interface Magnification {
  readonly over: number;
  readonly under: number;
  readonly source: Sentence;
}

function factorOf(magnification: Magnification): number {
  return magnification.over / magnification.under;
}

class HeaderScale {
  private error: Sentence | null = null;
  private readonly doubts: Sentence[] = [];
  private readonly tags: DicomScale;
  private readonly given: Magnification | null;

  constructor(tags: DicomScale, given: number | null) {
    this.tags = tags;
    this.given = given === null ? null : { over: given, under: 1, source: sentence("byGiven", { factor: given }) };
  }

  scale(): FilmScale {
    const imager = this.width(this.tags.imagerSpacing, "imagerSpacing");
    const pixel = this.width(this.tags.pixelSpacing, "pixelSpacing");
    this.checkAspect();
    const noted = this.notedMagnification();
    const typed = isKnown(this.tags.calibrationType);
    let scale: FilmScale = { kind: "none", doubts: this.doubts };
    if (pixel !== null && (typed || (imager !== null && differ(pixel, imager, squareWithin)))) {
      scale = this.calibrated(pixel, imager, noted);
    } else if (imager !== null) {
      scale = this.taken(imager, sentence("imagerSpacing"), this.given ?? noted, "detector");
    } else if (pixel !== null) {
      scale = this.taken(pixel, sentence("pixelSpacing"), this.given, "unknown");
      if (noted && !this.given) this.doubts.push(sentence("mayBeOut", { factor: factorOf(noted) }));
    }
    this.doubtCalibration(pixel !== null);
    return this.error ? { kind: "contradictory", error: this.error, doubts: this.doubts } : scale;
  }

  /** The first contradiction is told. */
  private fail(key: SentenceKey, values: Sentence["values"]): void {
    this.error ??= sentence(key, values);
  }

  private width(spacing: PixelSpacing | null, name: "imagerSpacing" | "pixelSpacing"): number | null {
    if (!spacing) return null;
    const values = { name: sentence(name), down: spacing.downMm, across: spacing.acrossMm };
    if (!(spacing.downMm > 0 && spacing.acrossMm > 0)) {
      this.fail("noWidth", values);
      return null;
    }
    if (differ(spacing.downMm, spacing.acrossMm, squareWithin)) this.fail("notSquare", values);
    return spacing.acrossMm;
  }

  private checkAspect(): void {
    const aspect = this.tags.aspect;
    if (aspect && differ(aspect.down, aspect.across, squareWithin)) this.fail("aspect", { ...aspect });
  }

  /** A zero stands where a device knows none. */
  private notedMagnification(): Magnification | null {
    const factor = this.tags.magnification ?? 0;
    const detector = this.tags.detectorDistanceMm ?? 0;
    const patient = this.tags.patientDistanceMm ?? 0;
    let noted: Magnification | null = null;
    if (detector !== 0 && patient !== 0) {
      const source = sentence("byDistances", { detector, patient, factor: detector / patient });
      noted = { over: detector, under: patient, source };
    }
    if (factor !== 0) {
      if (noted && !this.given && differ(factorOf(noted), factor, sameWithin)) {
        const names = { factorName: sentence("magnificationFactor"), otherName: sentence("distances") };
        this.fail("twoMagnifications", { factor, other: factorOf(noted), ...names });
      }
      noted = { over: factor, under: 1, source: sentence("byFactor", { factor }) };
    }
    if (noted && !this.given && !(factorOf(noted) >= 1)) {
      this.fail("makesSmaller", { factor: factorOf(noted), source: noted.source });
      return null;
    }
    return noted;
  }

  private calibrated(pixel: number, imager: number | null, noted: Magnification | null): FilmScale {
    const type = this.tags.calibrationType;
    if (this.given) this.fail("alreadyOut", {});
    if (imager !== null && pixel > imager * (1 + sameWithin)) this.fail("largerAtPatient", { pixel, imager });
    // An object of known size may have stood elsewhere than the distances say.
    if (imager !== null && noted && type !== "FIDUCIAL" && differ(pixel * factorOf(noted), imager, sameWithin)) {
      this.fail("otherWidth", { pixel, imager, source: noted.source, result: imager / factorOf(noted) });
    }
    if (type === "") this.doubts.push(sentence("calibratedHow"));
    return this.taken(pixel, type === "" ? sentence("calibrated") : sentence("calibratedBy", { type }), null, "patient");
  }

  private doubtCalibration(hasPixelSpacing: boolean): void {
    const type = this.tags.calibrationType;
    if (type === "") return;
    if (!hasPixelSpacing) this.doubts.push(sentence("calibrationOfNothing"));
    else if (!isKnown(type)) this.doubts.push(sentence("calibrationUnknown", { type }));
  }

  private taken(mm: number, name: Sentence, magnification: Magnification | null, plane: FilmPlane): FilmScale {
    if (magnification && factorOf(magnification) > mostUsualMagnification)
      this.doubts.push(sentence("unusualMagnification", { factor: factorOf(magnification) }));
    return {
      kind: "known",
      mmPerPixel: magnification ? (mm * magnification.under) / magnification.over : mm,
      plane: magnification ? "patient" : plane,
      source: magnification
        ? sentence("widthOver", { name, mm, magnification: magnification.source })
        : sentence("width", { name, mm }),
      doubts: this.doubts,
    };
  }
}

/**
 * Out of a DICOM header, by PS3.3 10.7 and C.8.11.5: a Pixel Spacing that was calibrated is that of the patient; Imager
 * Pixel Spacing is that of the detector, to be divided by the magnification; a Pixel Spacing alone may be either. The
 * magnification is the one given, else the factor in the header, else what its distances come to.
 */
export function scaleOfHeader(header: FilmHeader, magnification: number | null = null): FilmScale {
  return new HeaderScale(header.scale, magnification).scale();
}
