// What a DICOM header says of a film: its scale, its patient, what its greys mean.
import { viewOf } from "./bytes.ts";
import type { DicomCoding, DicomDataSet, DicomTag } from "./dicom_data_set.ts";
import { allTags, tags } from "./dicom_tags.ts";
import { textOfDicom } from "./dicom_text.ts";
import type { FilmHeader, GreyRule, GreyTable, GreyWindow, PixelSpacing } from "./film.ts";
import { sentence } from "./sentence.ts";

const longestCode = 16; // of a code string

/** A table of the first item of a sequence; null where there is none or it is not what it should be. */
function tableOf(data: DicomDataSet, sequence: DicomTag, signedValues: boolean): GreyTable | null {
  const found = data.firstItem(sequence, allTags);
  const descriptor = found?.find(tags.lutDescriptor);
  const entries = found?.find(tags.lutData);
  if (!descriptor || !entries || descriptor.value.length < 6) return null;
  const words = (value: Uint8Array, coding: DicomCoding) => (i: number): number =>
    viewOf(value).getUint16(2 * i, !coding.bigEndian);
  const describes = words(descriptor.value, descriptor.coding);
  const count = describes(0) || 65536; // 16 bits can't hold 65536
  const first = signedValues ? (describes(1) << 16) >> 16 : describes(1);
  const bits = describes(2);
  if (bits < 1 || bits > 16) return null;
  if (entries.value.length >= 2 * count) {
    const entry = words(entries.value, entries.coding);
    return { first, bits, entries: Uint16Array.from({ length: count }, (_, i) => entry(i)) };
  }
  if (entries.value.length < count) return null;
  return { first, bits, entries: Uint16Array.from(entries.value.subarray(0, count)) }; // a byte an entry
}

function spacing(data: DicomDataSet, tag: DicomTag): PixelSpacing | null {
  const [downMm, acrossMm, more] = data.decimals(tag);
  return downMm === undefined || acrossMm === undefined || more !== undefined ? null : { downMm, acrossMm };
}

/** Of "alphabetic=ideographic=phonetic" the one in the person's own script; "FAMILY^GIVEN" becomes two words. */
function personName(text: string): string {
  const [alphabetic = "", ideographic = ""] = text.split("=");
  const name = /[^^ ]/.test(ideographic) ? ideographic : alphabetic;
  return name.replace(/[\^ ]+/g, " ").trim();
}

function windowsOf(data: DicomDataSet): GreyWindow[] {
  const shapes: Readonly<Record<string, GreyWindow["shape"]>> = { SIGMOID: "sigmoid", LINEAR_EXACT: "linear_exact" };
  const shape = shapes[data.text(tags.windowFunction)] ?? "linear";
  const widths = data.decimals(tags.windowWidth);
  return data
    .decimals(tags.windowCenter)
    .map((centre, i) => ({ centre, width: widths[i] ?? 0, shape }))
    .filter((window) => window.width >= (shape === "linear" ? 1 : 1e-9));
}

/** `lowest`: the stored value of sample 0. */
export function greyRule(data: DicomDataSet, lowest: number): GreyRule {
  const intercept = data.decimal(tags.rescaleIntercept) ?? 0;
  return {
    whiteIsLow: data.text(tags.photometricInterpretation) === "MONOCHROME1",
    lowest,
    slope: data.decimal(tags.rescaleSlope) || 1,
    intercept,
    modality: tableOf(data, tags.modalityLut, lowest < 0),
    voi: tableOf(data, tags.voiLut, lowest < 0 || intercept < 0),
    windows: windowsOf(data),
  };
}

export function dicomHeader(data: DicomDataSet, compression: string, frames: number): FilmHeader {
  const sets = data.text(tags.specificCharacterSet);
  const words = (tag: DicomTag): string => textOfDicom(data.text(tag), sets);
  const firstOf = (...of: DicomTag[]): string => of.map((tag) => data.text(tag)).find((text) => text !== "") ?? "";
  const [down, across, more] = data.decimals(tags.pixelAspectRatio);
  return {
    format: "DICOM",
    compression,
    frames,
    scale: {
      imagerSpacing: spacing(data, tags.imagerPixelSpacing),
      pixelSpacing: spacing(data, tags.pixelSpacing),
      calibrationType: data.text(tags.calibrationType).slice(0, longestCode),
      calibrationDescription: words(tags.calibrationDescription),
      magnification: data.decimal(tags.magnification),
      detectorDistanceMm: data.decimal(tags.sourceToDetector),
      patientDistanceMm: data.decimal(tags.sourceToPatient),
      aspect: down === undefined || across === undefined || more !== undefined ? null : { down, across },
    },
    patient: {
      name: personName(words(tags.patientName)),
      id: words(tags.patientId),
      sex: data.text(tags.patientSex),
      birthDate: data.text(tags.patientBirthDate),
      filmDate: firstOf(tags.acquisitionDate, tags.seriesDate, tags.studyDate),
      laterality: firstOf(tags.imageLaterality, tags.laterality),
    },
    madeBy: [words(tags.manufacturer), words(tags.modelName)].filter((text) => text !== "").join(" "),
    doubts: data.text(tags.burnedInAnnotation) === "YES" ? [sentence("burnedIn")] : [],
  };
}
