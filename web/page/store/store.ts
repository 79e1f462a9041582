// What the page keeps on this machine: patients, their cases and the films of those. Nothing leaves the machine but by
// `exportAll`.

export type PatientId = string;
export type CaseId = string;
export type FilmId = string;

/** Dates are YYYY-MM-DD, each text "" where it is not known. */
export interface Patient {
  readonly id: PatientId;
  readonly name: string;
  /** The clinic's own number. */
  readonly number: string;
  readonly sex: "" | "male" | "female";
  readonly birthDate: string;
}

/** What a list shows of a case, without opening it. */
export interface CaseEntry {
  readonly id: CaseId;
  readonly patient: PatientId;
  readonly kind: "lateral" | "frontal" | "model";
  /** YYYY-MM-DD or "". */
  readonly filmDate: string;
  readonly film: FilmId | null;
  /** The case with the first reading of the film, where this is another one. */
  readonly readingOf?: CaseId;
  readonly landmarkCount: number;
  /** Milliseconds of the last change, as Date.now() gives it. */
  readonly changedAt: number;
}

/**
 * A case as it is kept. `document` is the page's own value, which must be JSON and is never changed in place; the store
 * doesn't look into it. `revision` grows by one with each save, so that a tab notices that another has been faster.
 */
export interface StoredCase<Document> {
  readonly entry: CaseEntry;
  readonly document: Document;
  readonly revision: number;
}

/** A patient with cases of several dates, the latest first. */
export interface PatientEntry {
  readonly patient: Patient;
  readonly cases: readonly CaseEntry[];
}

export interface StoredFilm {
  readonly id: FilmId;
  /** The file as it came, to the byte. */
  readonly file: Blob;
  readonly name: string;
}

/** How saving stands. A failure stays until a later save succeeds; what could not be saved is still to be saved. */
export type SaveState =
  | { readonly kind: "saved" }
  | { readonly kind: "saving" }
  | { readonly kind: "failed"; readonly why: SaveFailure; readonly detail: string };

/**
 *  full: the disk or the browser's share of it; tried again until there is room
 *  conflict: another tab has changed the same case since; `resolve` says whose is kept
 *  closed: the browser has closed or lost the database
 *  other: `detail` has the browser's words
 */
export type SaveFailure = "full" | "conflict" | "closed" | "other";

export interface Store<Document> {
  /** All patients, by name; a list of hundreds comes at once, since films and documents are not read. */
  patients(): Promise<readonly PatientEntry[]>;
  putPatient(patient: Patient): Promise<void>;
  /** With its cases and films. */
  deletePatient(id: PatientId): Promise<void>;

  openCase(id: CaseId): Promise<StoredCase<Document> | null>;
  /**
   * Saves after a change, in the order of the calls, without the caller waiting: while one write is under way the latest
   * value of each case waits for the next. `saveState` tells how it went. What fails is kept and tried again.
   */
  saveCase(entry: CaseEntry, document: Document): void;
  deleteCase(id: CaseId): Promise<void>;
  /** When all that was given to `saveCase` and `putFilm` is on the disk, or has failed: false then. */
  settled(): Promise<boolean>;
  /** After 'conflict': ours overwrites the other tab's, or theirs is taken and ours given up. */
  resolve(id: CaseId, whose: "ours" | "theirs"): Promise<void>;

  /** The same bytes are kept once, under the id that is given. They are saved as a case is: what fails is tried again. */
  putFilm(file: Blob, name: string): Promise<FilmId>;
  film(id: FilmId): Promise<StoredFilm | null>;

  saveState(): SaveState;
  /** Calls `listener` at each change of the save state; gives what ends that. */
  onSaveState(listener: (state: SaveState) => void): () => void;
  /** Calls `listener` when another tab has changed a case or the list ("" for the list). */
  onOtherTab(listener: (id: CaseId | "") => void): () => void;

  /** Everything as one file (`archive.ts`), however large: films are not read into memory. */
  exportAll(): Promise<Blob>;
  /**
   * Adds what such a file holds: patients, cases and films that are not here, and cases that were changed later there. The
   * file is checked whole before anything is written, and all is written or nothing. Throws StoreError: "damaged" with
   * the place, "full".
   */
  importAll(file: Blob): Promise<ImportCount>;
  close(): void;
}

export interface ImportCount {
  readonly patients: number;
  readonly cases: number;
  readonly films: number;
  /** Cases that were here already and not older. */
  readonly left: number;
}

/** `message` has the browser's words, or the place of the damage. */
export class StoreError extends Error {
  readonly why: SaveFailure | "damaged";

  constructor(why: SaveFailure | "damaged", message: string) {
    super(message);
    this.why = why;
  }
}
