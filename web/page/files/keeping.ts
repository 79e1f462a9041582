// The case that is worked on and the store: every change is kept at once, and what was kept can be opened again.
import { batch, computed, effect, signal } from "@preact/signals";
import { readFilm } from "../film/reader.ts";
import { wordsOf } from "../film/sentence.ts";
import { beginGuide } from "../place/guide.ts";
import { history, record } from "../state/desk.ts";
import type { Case, Document } from "../state/document.ts";
import { allPlaced } from "../state/work.ts";
import type { CaseEntry, CaseId, FilmId, Patient, PatientEntry, PatientId, SaveState, Store } from "../store/store.ts";
import { fit } from "../view/stage.ts";
import { earlier } from "../view/tracings.ts";
import { language, sayError } from "../words/words.ts";
import { showFilm, showNoFilm } from "./show_film.ts";

/** null where the browser keeps nothing. */
export const store = signal<Store<Document> | null>(null);
export const saveState = signal<SaveState>({ kind: "saved" });
export const patients = signal<readonly PatientEntry[]>([]);

interface Place {
  readonly id: CaseId;
  readonly patient: PatientId;
  readonly film: FilmId | null;
  /** The case with the film's first reading; null in that itself. */
  readonly readingOf: CaseId | null;
}

function newPlace(patient: PatientId = crypto.randomUUID()): Place {
  return { id: crypto.randomUUID(), patient, film: null, readingOf: null };
}

const place = signal<Place>(newPlace());

interface Reading {
  readonly id: CaseId;
  readonly document: Document;
}

/** The other reading of the film on the desk, where it was read twice. */
export const otherReading = signal<Reading | null>(null);
/** Whether the one on the desk is not the first. */
export const isReadAgain = computed(() => place.value.readingOf !== null);
let waitingPatient: PatientId | null = null;

/** Another case. The one before has been kept with its last change. */
export function beginCase(document: Document): void {
  batch(() => {
    place.value = newPlace(waitingPatient ?? undefined);
    waitingPatient = null;
    earlier.value = null;
    otherReading.value = null;
    history.begin(document);
  });
}

/** Another reading of the film on the desk, as a case of its own. */
export function beginReading(document: Document): void {
  const before = place.peek();
  batch(() => {
    otherReading.value = { id: before.id, document: history.document.peek() };
    place.value = { ...before, id: crypto.randomUUID(), readingOf: before.readingOf ?? before.id };
    earlier.value = null;
    history.begin(document);
  });
}

/** The other reading of the film comes to the desk, and this one becomes the other. */
export async function openOtherReading(): Promise<void> {
  const other = otherReading.peek();
  if (!other) return;
  const now = store.peek();
  if (now) {
    await now.settled();
    await openKept(other.id);
    return;
  }
  const before = place.peek();
  batch(() => {
    otherReading.value = { id: before.id, document: history.document.peek() };
    place.value = { ...before, id: other.id, readingOf: before.readingOf === null ? before.id : null };
    history.begin(other.document);
  });
}

/** The reading on the desk is given up for the other one. */
export async function giveReadingUp(): Promise<void> {
  const { id } = place.peek();
  await openOtherReading();
  otherReading.value = null;
  if (place.peek().id !== id) await store.peek()?.deleteCase(id);
}

async function otherReadingOf(now: Store<Document>, entry: CaseEntry): Promise<Reading | null> {
  const all = (await now.patients()).flatMap(({ cases }) => cases);
  const others = entry.readingOf === undefined ? all.filter(({ readingOf }) => readingOf === entry.id) : all.filter(({ id }) => id === entry.readingOf);
  for (const { id } of others) {
    const kept = await now.openCase(id);
    if (kept && !kept.document.view.isBlind) return { id, document: kept.document };
  }
  return null;
}

function patientOf(id: PatientId, { name = "", sex, birth = "" }: Case, number = ""): Patient {
  return { id, name, number, sex: sex ?? "", birthDate: birth };
}

/** Puts cases into the list, each with a patient of its own, without showing them. False where nothing is kept. */
export function keepBeside(documents: readonly Document[]): boolean {
  const now = store.peek();
  if (!now) return false;
  for (const document of documents) {
    const at = newPlace();
    now.putPatient(patientOf(at.patient, document.work.case)).catch(sayError);
    now.saveCase(entryOf(at, document), document);
  }
  return true;
}

/** The next case that is begun is a film of this patient. */
export function nextCaseIsOf(patient: PatientId): void {
  waitingPatient = patient;
}

export async function keepFilm(file: File): Promise<void> {
  const now = store.peek();
  const { id } = place.peek();
  if (!now) return;
  try {
    const kept = await now.putFilm(file, file.name);
    if (place.peek().id === id) place.value = { ...place.peek(), film: kept };
  } catch (error) {
    sayError(error);
  }
}

function entryOf({ id, patient, film, readingOf }: Place, { work }: Document): CaseEntry {
  return {
    id,
    patient,
    kind: work.case.kind,
    filmDate: work.case.film ?? "",
    film,
    ...(readingOf !== null && { readingOf }),
    landmarkCount: allPlaced(work.case).length,
    changedAt: Date.now(),
  };
}

function isWorthKeeping({ work }: Document): boolean {
  return allPlaced(work.case).length > 0 || work.case.name !== undefined || work.case.image !== undefined;
}

const patientFacts = computed(() => {
  const { name, sex, birth } = record.value;
  return JSON.stringify([name, sex, birth]);
});

let keptPatient = "";

effect(() => {
  const now = store.value;
  if (!now || history.isStepping.value) return;
  const document = history.document.value;
  const at = place.value;
  if (!isWorthKeeping(document)) return;
  const facts = `${at.patient} ${patientFacts.value}`;
  if (facts !== keptPatient) {
    keptPatient = facts;
    const number = patients.peek().find(({ patient }) => patient.id === at.patient)?.patient.number ?? "";
    now.putPatient(patientOf(at.patient, document.work.case, number)).catch(sayError);
  }
  now.saveCase(entryOf(at, document), document);
  rememberCase(at.id);
});

effect(() => {
  const now = store.value;
  if (!now) return;
  saveState.value = now.saveState();
  const ends = [now.onSaveState((state) => (saveState.value = state)), now.onOtherTab((id) => id === "" && void refreshPatients())];
  return () => ends.forEach((end) => end());
});

export async function refreshPatients(): Promise<void> {
  patients.value = (await store.peek()?.patients()) ?? [];
}

/** Other films of the same patient, the latest first. */
export const earlierCases = computed<readonly CaseEntry[]>(() => {
  const { id, patient, readingOf } = place.value;
  const first = readingOf ?? id;
  const all = patients.value.find((entry) => entry.patient.id === patient)?.cases ?? [];
  return all.filter((entry) => entry.id !== first && entry.readingOf === undefined && entry.kind === record.value.kind && entry.landmarkCount > 0);
});

export async function openEarlier(id: CaseId): Promise<void> {
  const kept = await store.peek()?.openCase(id);
  earlier.value = kept?.document.work.case ?? null;
}

export async function openKept(id: CaseId): Promise<boolean> {
  const now = store.peek();
  const kept = await now?.openCase(id);
  if (!now || !kept) return false;
  const stored = kept.entry.film === null ? null : await now.film(kept.entry.film);
  const file = stored && new File([stored.file], stored.name);
  const read = file && (await readFilm(file));
  const other = await otherReadingOf(now, kept.entry);
  batch(() => {
    place.value = { id, patient: kept.entry.patient, film: kept.entry.film, readingOf: kept.entry.readingOf ?? null };
    earlier.value = null;
    otherReading.value = other;
    if (file && read?.kind === "film") showFilm(read.film, file);
    else showNoFilm();
    if (file && read?.kind === "error") sayError(new Error(`${file.name}: ${wordsOf(read.error, language.peek())}`));
    history.begin(kept.document);
    fit();
    beginGuide();
  });
  return true;
}

export function isOnDesk(id: CaseId): boolean {
  return place.peek().id === id;
}

/** A case that is not on the desk. */
export async function deleteKept(id: CaseId): Promise<void> {
  if (otherReading.peek()?.id === id) otherReading.value = null;
  await store.peek()?.deleteCase(id);
  await refreshPatients();
}

/** A patient none of whose cases is on the desk, with all of them. */
export async function deleteKeptPatient(id: PatientId): Promise<void> {
  await store.peek()?.deletePatient(id);
  await refreshPatients();
}

/** Another tab has been faster: what is here goes before it, or is given up for it. */
export async function resolveConflict(whose: "ours" | "theirs"): Promise<void> {
  const { id } = place.peek();
  try {
    await store.peek()?.resolve(id, whose);
    if (whose === "theirs") await openKept(id);
  } catch (error) {
    sayError(error);
  }
}

const lastCaseKey = "digitiser.case";

/** Of this tab first, so that two tabs come back with a case each. */
function rememberCase(id: CaseId): void {
  for (const storage of storages()) storage.setItem(lastCaseKey, id);
}

function storages(): Storage[] {
  try {
    return [sessionStorage, localStorage];
  } catch {
    return [];
  }
}

/** What was worked on last, as it was. */
export async function openLast(): Promise<boolean> {
  const id = storages().map((storage) => storage.getItem(lastCaseKey)).find((found) => found !== null);
  return id ? openKept(id) : false;
}
