// The measuring engine: the library and its rooms cases, results, tracing and report, compiled to WebAssembly.
//
// Coordinates are pixels of the film as its file stores it, x to the right, y down, whole or fractional; a lateral face
// looks right. (0, 0) means "not placed". Lengths are mm at the patient, angles degrees. Texts come in the language that
// is asked for; messages of errors and checks are English.
//
// Every call that fails throws an EngineError with the library's own message. Nothing is fetched, nothing leaves.

/** Loads the module, whose bytes lie in a script of their own (gzip, base64), so that no fetch is needed. */
export function loadEngine(): Promise<Engine>;

export type Kind = "lateral" | "frontal" | "model";
export type Sex = "male" | "female";
export type Language = "en" | "ja";
/** Sheets of diagnosis and surgery are measured on lateral films. */
export type AnalysisKind = Kind | "diagnosis" | "surgery";
/** Hellman's; also Engine.dentalStages. */
export type DentalStage = "I" | "IIA" | "IIC" | "IIIA" | "IIIB" | "IIIC" | "IVA" | "IVC" | "VA";

export interface Point {
  x: number;
  y: number;
}

export class EngineError extends Error {
  /** Of an error that the engine itself finds, not the library: fault.h. "" for others. */
  readonly key: string;
  /** What its words name. */
  readonly names: readonly string[];
  /** "" when no file is at fault. */
  readonly file: string;
  /** From 1; 0: the file as a whole. */
  readonly line: number;
  /** From 1, in characters. */
  readonly column: number;
  /** The faulty line, "" without one. */
  readonly excerpt: string;
  /** What to do about it, "" when there is nothing to say. */
  readonly wayOut: string;
}

/** `text` is in the language asked for; `code` is short and stable (docs/formats.md#remarks). */
export interface Remark {
  code: string;
  text: string;
}

/** What the checker finds: `cephtool check`. */
export interface Problem {
  file: string;
  line: number;
  column: number;
  /** Worth knowing, but it can be meant so. */
  note: boolean;
  /** What was found and the way out. */
  message: string;
}

/** `name` may be a path: "CalcForm/list.txt", or "our-clinic/CalcForm/list.txt" as a folder picker gives it. */
export interface NamedBytes {
  name: string;
  bytes: Uint8Array;
}

export interface Engine {
  readonly version: string;
  readonly dentalStages: readonly DentalStage[];
  readonly caseFormats: readonly CaseFormat[];

  /** The analyses that ship. */
  shippedFolder(): AnalysisFolder;
  /**
   * A clinic's own folder, or a single definition file (one file that is not in a folder CalcForm…): then its analysis
   * is there once for each kind. Files are as they stand in the folder, in code page 932. Throws when there is nothing
   * in it to measure with; slips are in `problems`.
   */
  openFolder(files: readonly NamedBytes[]): AnalysisFolder;

  /** Of the kind's table, in its order; behind them those that shipped analyses use and a case has as its own (Cm). */
  landmarks(kind: Kind): readonly LandmarkInfo[];
  /** Points that formulas construct and that are no landmarks (CC, CF), by expressions of the formula language: to be shown. */
  formulaPoints(kind: Kind): readonly { name: string; expression: string }[];
  /** The made-up average face that guides placing; nothing for casts. */
  averageFace(kind: Kind): AverageFace | null;

  /** Any of the formats, told apart by content and extension. A TPS file holds any number of cases. */
  readCases(name: string, bytes: Uint8Array, options?: ReadOptions): ReadCase[];
  /**
   * `lost` says what the format has no place for (English). Reading the bytes again gives the same landmarks. Throws
   * when the format can't hold the case.
   */
  writeCase(record: Case, format: CaseFormatName): { bytes: Uint8Array; lost: string[] };

  /** A new session; the case may be empty but for its kind. */
  measure(record: Case): Session;

  /** A date as people write it, western or of an era ("2012-03-31", "H24.3.31", "平成24年3月31日"), as YYYY-MM-DD. */
  readDate(text: string): string;
  /** "2024年3月5日（令和6年3月5日）", "2024-03-05 (R6.3.5)"; without the era for a day of none. */
  showDate(date: string, language: Language): string;
  /** "13 y 7 m", completed. Throws when the film is older than the patient. */
  age(birth: string, film: string, language: Language): string;

  /** All of a report on A4, or values with their charts on one sheet as long as it must be; of up to three films of one
   * kind, the oldest first. Throws without a scale. */
  report(films: readonly ReportFilm[], analyses: readonly Analysis[], language: Language): SvgPage[];
  chart(films: readonly ReportFilm[], analyses: readonly Analysis[], language: Language): SvgPage;
  /** As `cephtool analyze --format csv` and json. Throws without a scale. */
  resultsCsv(records: readonly Case[], analyses: readonly Analysis[], language?: Language): string;
  resultsJson(records: readonly Case[], analyses: readonly Analysis[], language?: Language): string;

  /** The second reading of a film less the first: landmarks in mm along and across Frankfort of the first, values that both
   * have. Throws without scales. */
  compareReadings(first: Case, second: Case, analyses: readonly Analysis[]): ReadingComparison;
  /** How well readings of the same films agree, as `cephtool reliability` reckons it: of at least three films, each with the
   * readings in the same order and on one scale. */
  study(films: readonly StudyFilm[], analyses: readonly Analysis[]): Study;
  /** As its --format csv. */
  studyCsv(films: readonly StudyFilm[], analyses: readonly Analysis[]): string;

  /** In place of each analysis its variant with norms of the population, where it has one; as Case.population has it. Choose
   * these for a session, and for reports and results. Where there is none, Session.norms has a remark. */
  forPopulation(analyses: readonly Analysis[], population: string | undefined): Analysis[];

  /**
   * A definition file (code page 932) of items of analyses of one kind, in their order: each has the value, norm and
   * deviation that its own analysis gives. openFolder reads it. Throws when items do not go together: unlike kinds, norms
   * by age here and by dental stage there.
   */
  compose(title: string, items: readonly { analysis: Analysis; item: Item }[]): Uint8Array;
}

/** `svg` has its size in millimetres. */
export interface SvgPage {
  svg: string;
  widthMm: number;
  heightMm: number;
}

/** The film under a tracing: a JPEG or PNG file's bytes, in the pixels of the case. */
export interface FilmPicture {
  bytes: Uint8Array;
  width: number;
  height: number;
}

export interface ReportFilm {
  record: Case;
  film?: FilmPicture;
}

// ---- Readings ------------------------------------------------------------------------------------------------------

export interface ReadingComparison {
  /** That both readings have; mm. */
  landmarks: { name: string; along: number; across: number; distance: number }[];
  /** Dahlberg's error of all these landmarks together; mm. */
  dahlbergAlong: number | null;
  dahlbergAcross: number | null;
  values: {
    analysis: Analysis;
    item: Item;
    /** As they are shown, and the second less the first. */
    first: string;
    second: string;
    text: string;
    difference: number;
    /** Of this pair alone. */
    dahlberg: number;
  }[];
}

export interface StudyFilm {
  name: string;
  readings: readonly Case[];
}

export interface Study {
  films: number;
  readings: number;
  /** Two of each landmark ("A along", "A across"; mm), and one of each item that three films have. */
  rows: {
    group: "landmark" | "item";
    /** The analysis' title, "" for landmarks. */
    analysis: string;
    name: string;
    unit: Item["unit"];
    films: number;
    mean: number;
    technical_error: number;
    icc21: IntraclassCorrelation | null;
    icc31: IntraclassCorrelation | null;
    mean_squares: [films: number, readings: number, error: number];
    /** Each further reading less the first. */
    against_first: {
      bias: number;
      bias_interval: [low: number, high: number];
      t: number | null;
      p: number | null;
      sd_of_differences: number;
      dahlberg: number;
      limits: [low: number, high: number];
      limit_error: number;
    }[];
  }[];
}

/** Of single readings, with its 95 % interval. */
export interface IntraclassCorrelation {
  value: number;
  interval: [low: number, high: number];
}

// ---- Landmarks -----------------------------------------------------------------------------------------------------

export interface LandmarkInfo {
  /** As in formulas: "Pog(R)". */
  name: string;
  title: { en: string; ja: string };
  /** "" where the project has none (points of casts have a title at most). */
  definition: { en: string; ja: string };
  /** How it is found on the film: by eye, or how it is constructed. */
  howFound: { en: string; ja: string };
  /** No landmark of the kind's table, but of particular analyses: a case has it under "user". */
  own: boolean;
  /** Found by construction, not by eye; `howFound` says how. */
  constructed: boolean;
  /** Where other landmarks can make it: an expression of the formula language, and what it needs. Nothing is measured on
   * it before it is placed. */
  construction: {
    expression: string;
    from: string[];
    /** It is asked for like any other, and made of those only where they happen to be placed. */
    optional?: boolean;
  } | null;
}

export type Tissue = "hard" | "soft" | "tooth";

export interface Outline {
  name: string;
  tissue: Tissue;
  /** To be drawn thinner. */
  fine: boolean;
  /** No outline of the patient: the ideal arch of a cast, the mirrored half of a frontal tracing. */
  dotted: boolean;
  closed: boolean;
  /** A smooth curve through all of them (uniform Catmull-Rom). */
  points: Point[];
}

export interface AverageFace {
  mmPerPixel: number;
  landmarks: { name: string; x: number; y: number }[];
  outlines: Outline[];
}

// ---- Analyses ------------------------------------------------------------------------------------------------------

export interface AnalysisFolder {
  /** Of this engine. */
  readonly id: number;
  /** Of the checker: nothing of the shipped folder. */
  readonly problems: readonly Problem[];
  /** Without those that are variants of others for another population. */
  analyses(kind: Kind): readonly Analysis[];
  modes(kind: Kind): readonly DisplayMode[];
  /** Those whose norms there are, by name. */
  populations(kind: Kind): readonly Population[];
  /** Frees its memory; not for the shipped one. Sessions and analyses of it must not be used any more. */
  delete(): void;
}

export interface Analysis {
  /** Of this engine; different for each analysis of each folder. */
  readonly id: number;
  readonly kind: AnalysisKind;
  /** Of the cases that it is for. */
  readonly caseKind: Kind;
  /** "Steiner": the file's name without extension. */
  readonly name: string;
  readonly title: string;
  /** The title in a language. */
  readonly label: InBoth;
  /** Whose norms it has; null when its file does not say. */
  readonly population: Population | null;
  /** Sheets with norms of other populations for it: AnalysisFolder.analyses has not them, but Engine.forPopulation. */
  readonly variants: readonly Analysis[];
  readonly comment: string;
  readonly items: readonly Item[];
  /** All that its formulas name, in the order in which a person places them: that of the kind's table, others last. */
  readonly landmarks: readonly string[];
}

export interface InBoth {
  en: string;
  ja: string;
}

export interface Population {
  /** What Case.population holds. */
  readonly name: string;
  readonly label: InBoth;
  /** As the file has it: "Japanese adults". */
  readonly words: InBoth;
}

export interface Item {
  /** Of the file, the same in all languages. */
  readonly name: string;
  /** What it is called in a language. */
  readonly label: InBoth;
  /** Of the items below it, their group; then only name and label count. */
  readonly heading: boolean;
  readonly unit: "deg" | "mm" | "%" | "SD" | "";
  readonly formula: string;
  /** 0 to 2: the value column that its author wants. */
  readonly column: number;
  /** To be set off from the others. */
  readonly marked: boolean;
  /** What a positive value means, "" when the file does not say. */
  readonly sign: InBoth;
  /** Why the norm is to be doubted, nobody saw its source; "" for one that was seen. RowText.mean has a † then. */
  readonly unverified: InBoth;
  readonly landmarks: readonly string[];
}

/** What a tracing shows: its lines and values. */
export interface DisplayMode {
  readonly id: number;
  readonly kind: Kind;
  readonly name: string;
  readonly title: string;
  /** The title in a language. */
  readonly label: InBoth;
}

// ---- Cases ---------------------------------------------------------------------------------------------------------

/** The program's case JSON, as docs/case_format.md has it; keys that begin with "x-" are kept. */
export interface Case {
  format: "cephtool-case";
  version: 1;
  name?: string;
  kind: Kind;
  sex?: Sex;
  /** YYYY-MM-DD. */
  birth?: string;
  film?: string;
  side?: "left" | "right";
  dental_stage?: DentalStage;
  /** Whose norms count: a Population's name. */
  population?: string;
  image?: string;
  /** At the patient. Without it no length is measured; the program wants it, or the film's header, when it reads. */
  mm_per_pixel?: number;
  landmarks: Record<string, [number, number]>;
  /** C3ua … C4lp, of lateral films: for the bone age. */
  vertebrae?: Record<string, [number, number]>;
  /** Own landmarks: names of 1 to 5 bytes in code page 932, at most 100. */
  user?: Record<string, [number, number]>;
  virtual?: Record<string, string>;
  outlines?: { name: string; closed: boolean; points: [number, number][]; anchors: string[] }[];
  /** Of a cast: the category that was judged. */
  palate?: number;
  [foreign: `x-${string}`]: unknown;
}

export type CaseFormatName = "json" | "csv" | "tps" | "slicer" | "fcsv" | "challenge";

export interface CaseFormat {
  name: CaseFormatName;
  /** ".mrk.json" */
  extension: string;
}

export interface ReadOptions {
  /** Names of the points of a TPS or challenge file in their order; "-" passes one over. */
  landmarks?: string[];
  /** In pixels, for y that points up. */
  imageHeight?: number;
  mmPerPixel?: number;
  sex?: Sex;
  /** As somebody types it. */
  population?: string;
  /** Turns x (y) round, unless signs are seen to hold. */
  mirror?: boolean;
  flipY?: boolean;
  language?: Language;
}

export interface ReadCase {
  record: Case;
  /** What changes how its numbers are to be read. */
  remarks: Remark[];
  /** What the reader took for granted or left out. English. */
  notes: string[];
}

// ---- Measuring -----------------------------------------------------------------------------------------------------

/** One film or cast that is being measured. Nothing is computed before it is asked for. */
export interface Session {
  readonly kind: Kind;
  /** The case as it stands, to be kept; as JSON it is a file that cephtool reads. */
  record(): Case;
  /** Takes another case in its place: undo, or a patient's facts. Of the session's kind. */
  setRecord(record: Case): void;
  /** Places or moves a landmark: of the kind's table, a vertebra's, or else the person's own. */
  place(name: string, x: number, y: number): void;
  /** Nothing happens when it is not placed. */
  remove(name: string): void;

  /** Whose rows `measure` gives, one after the other. Of the session's kind. */
  choose(analyses: readonly Analysis[]): void;
  /** One for each item of the chosen analyses, headings included, in their order. */
  readonly rows: readonly Row[];
  /** What the choice needs, in the order in which a person places them. */
  readonly neededLandmarks: readonly string[];

  /** All rows anew, numbers only: the call for each frame of a drag. */
  measure(): Numbers;
  /** The same rows in words; `rows` picks some. */
  texts(language: Language, rows?: readonly number[]): RowText[];
  /** Standard errors of values, from those of the landmarks (docs/errors.md): of these rows, or of all; rows without a value
   * are left out. Without a scale there are none. Takes longer than a frame of a drag has. */
  errors(language: Language, rows?: readonly number[]): RowErrors;
  /** Landmarks that lie improbably far from where the others expect them, the farthest first. */
  outliers(language: Language): Outlier[];
  /** What holds for all rows: mirrored, y up, no scale, norms that end, norms by sex. */
  remarks(language: Language): Remark[];
  /** Of each chosen analysis: which norms count, in words, and remarks on them. */
  norms(language: Language): { analysis: Analysis; words: string; remarks: Remark[] }[];
  /** What a row measures, to be drawn; [] for headings, casts, and rows without result. */
  shapes(row: number): Shape[];

  /** Where the point lies that an expression of the formula language makes: "mid([U1],[L1])". Null when it needs a
   * landmark that is missing. Throws for what is no expression. */
  construct(expression: string): Point | null;
  /** The case's virtual landmarks and, where LandmarkInfo has a construction, landmarks that are not placed. */
  constructed(): { name: string; x: number; y: number; expression: string }[];
  /** Where the landmark is likely: the average face bent to the landmarks that are placed (thin-plate spline). Null
   * before three are placed, and for landmarks that the average face lacks. */
  suggest(name: string): Point | null;

  /** Without a scale there are no values. */
  tracing(options: TracingOptions): Tracing;
  /** As a drawing with its size in millimetres, over the film where one is given. Throws without a scale. */
  tracingSvg(options: TracingOptions & { film?: FilmPicture; style?: "paper" | "film" }): SvgPage;
  /** An earlier case's tracing in this case's pixels, lengths in mm kept. Throws without a scale of both, and when a
   * landmark of the line is missing. */
  superimpose(earlier: Case, on: Registration, options: TracingOptions): Tracing;

  /** Age, dental stage, Ricketts stage and bone age. */
  growth(language: Language): GrowthFinding[];
  delete(): void;
}

/** S-N at S; ANS-PNS at ANS; mandibular plane (Me-Go) at Me. */
export type Registration = "cranial-base" | "palatal-plane" | "mandibular-plane";

export interface Row {
  readonly analysis: Analysis;
  readonly item: Item;
}

/** Views into the engine's memory: valid until the next call of anything of the engine; copy what is to be kept. */
export interface Numbers {
  /** One a row; NaN where there is none. */
  readonly value: Float64Array;
  readonly mean: Float64Array;
  readonly sd: Float64Array;
  /** Of the value from the mean, in SD. */
  readonly deviation: Float64Array;
  /** One a row: see RowState. */
  readonly state: Uint8Array;
}

/** What a row shows. */
export const RowState: {
  readonly heading: 0;
  readonly value: 1;
  readonly text: 2;
  readonly missing: 3;
  readonly noFormula: 4;
  readonly notFinite: 5;
  readonly differsBySex: 6;
  readonly atOnePlace: 7;
  readonly parallel: 8;
  readonly differsByBand: 9;
  /** A length, or what rests on one, without a scale. */
  readonly noScale: 10;
};

export interface RowText {
  row: number;
  /** "82.3"; of a text item its verdict; "" without result. */
  value: string;
  /** In brackets when the norms are of people who were not of the patient's age; with a † behind when nobody saw its source. */
  mean: string;
  sd: string;
  /** "+2.43" */
  deviation: string;
  /** One for every whole SD: "**", "*****+". */
  stars: string;
  /** Landmarks that the value needs and the case lacks. */
  missing: string[];
  /** Why there is no value when no landmark is missing, "" with one. */
  reason: string;
}

export interface RowErrors {
  /** What they are, and rest on; none without any. */
  remarks: string[];
  rows: {
    row: number;
    /** One standard error in the value's unit, and of the deviation in SD; null where it is not known. */
    error: number | null;
    deviationError: number | null;
    /** The error with the decimals of the value, "" where it is not known. */
    text: string;
    /** The landmark that makes up most of it, "" where it is not known. */
    mostly: string;
    /** Landmarks whose own error nobody measured: the value's is in parentheses then. */
    assumed: string[];
    /** The 95 % interval of a deviation of stars covers 0. */
    isDoubtful: boolean;
    /** "mostly N (71 %)", that the deviation may be none, or why no error is known. */
    words: string[];
  }[];
}

export interface Outlier {
  name: string;
  /** From where the others expect it. */
  mm: number;
  /** How many expect it. */
  others: number;
  /** "Go lies 9 mm from where the other 18 landmarks expect it." */
  text: string;
}

/**
 * What a formula measured or constructed. `points`, by kind: length, length_right, length_down: from, to; angle: end of
 * a side, vertex, end of the other; line_angle: from, to of each line; middle: two points, the middle; foot: a point, the
 * two of the line, the foot; crossing: the two of each line, where they meet; bisector: vertex, a point on each side, the
 * point; extension: from, to, the point beyond; effective_a: N, A, U1R, U1, U1C, the point.
 */
export interface Shape {
  kind:
    | "length"
    | "length_right"
    | "length_down"
    | "angle"
    | "line_angle"
    | "middle"
    | "foot"
    | "crossing"
    | "bisector"
    | "extension"
    | "effective_a";
  points: Point[];
  /** The lines to draw it with. */
  segments: { from: Point; to: Point }[];
  /** The angle's arc: about `at` from direction `from` to direction `to`, radians clockwise from the right (y down), the
   * shorter way round; null for what is no angle and for parallel lines. */
  arc: { at: Point; from: number; to: number } | null;
}

export interface TracingOptions {
  /** The first of the folder without it; null: outlines and landmarks alone, which take a fraction of the time. */
  mode?: DisplayMode | null;
  /** case: its own outlines where it has any; fitted: those of the average face. */
  outlines: "case" | "fitted" | "none";
  /** For values of the display mode; the shipped folder's without it. */
  folder?: AnalysisFolder;
}

/** In pixels of the film. */
export interface Tracing {
  outlines: Outline[];
  lines: { name: string; from: Point; to: Point; colour: string; bold: boolean }[];
  landmarks: { name: string; x: number; y: number }[];
  /** `at` is the upper left corner; `sizePt` the height of the letters at true size. */
  values: { text: string; at: Point; colour: string; sizePt: number }[];
  /** What was left out, and why. English. */
  notes: string[];
}

export interface GrowthFinding {
  what: string;
  /** "12 years 3 months", "IIIB", "5"; "" when it was not found out. */
  result: string;
  years: number | null;
  /** What the case lacks: a key of the case format or a point of a vertebra. */
  missing: string[];
  reason: string;
  grounds: { name: string; text: string }[];
}
