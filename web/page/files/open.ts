// Files that a person gives: films, cases, and a clinic's own analyses. Their content says what they are.
import { batch, signal } from "@preact/signals";
import type { Case as EngineCase, ReadCase } from "../../engine/engine.js";
import { beginsAsFilm } from "../film/decode.ts";
import type { Film } from "../film/film.ts";
import { readFilm } from "../film/reader.ts";
import { scaleOfHeader } from "../film/scale.ts";
import { wordsOf } from "../film/sentence.ts";
import { panel } from "../parts/panel_choice.ts";
import { beginGuide } from "../place/guide.ts";
import { usualAnalyses } from "../results/usual_analyses.ts";
import { engine, film, folder, history, record, work } from "../state/desk.ts";
import { type Case, type Document, emptyDocument } from "../state/document.ts";
import { withFacts } from "../state/work.ts";
import { takeHeader } from "../calibrate/scale_panel.tsx";
import { fit, focusFilm } from "../view/stage.ts";
import { language, say, sayError, sayNothing, words } from "../words/words.ts";
import { showFilm, showNoFilm } from "./show_film.ts";
import { factsOfHeader } from "./film_facts.ts";
import { beginCase, keepFilm } from "./keeping.ts";

/** How many files are being read. */
export const opening = signal(0);

/** One film and one case are put together; of more cases the first is taken. */
export async function openFiles(files: readonly File[]): Promise<void> {
  ++opening.value;
  sayNothing();
  try {
    const films: File[] = [];
    const cases: File[] = [];
    for (const file of files) {
      const head = new Uint8Array(await file.slice(0, 1024).arrayBuffer());
      (beginsAsFilm(head) ? films : cases).push(file);
    }
    if (cases[0]) await openCase(cases[0]);
    if (films[0]) await openFilm(films[0]);
    if (films.length > 1 || cases.length > 1) say(words.peek().firstTaken);
  } catch (error) {
    sayError(error);
  } finally {
    --opening.value;
  }
}

/** Landmarks without a film get this one, else it begins a new case. */
async function openFilm(file: File): Promise<void> {
  const read = await readFilm(file);
  if (read.kind === "error") throw new Error(`${file.name}: ${wordsOf(read.error, language.peek())}`);
  const belongs = film.peek() === null && Object.keys(record.peek().landmarks).length > 0;
  batch(() => {
    if (!belongs) {
      const { kind } = record.peek();
      beginCase(emptyDocument(kind, usualAnalyses(folder.peek()?.analyses(kind) ?? [])));
    }
    showFilm(read.film, file);
    const header = read.film.header;
    history.change((now) => withFacts(now, { ...factsOfHeader(header.patient, now.case), image: file.name }));
    takeScale(read.film);
    fit();
    beginGuide();
  });
  focusFilm();
  await keepFilm(file);
  for (const doubt of read.film.header.doubts) say(wordsOf(doubt, language.peek()));
}

/** What the header says of the patient's plane is taken at once; a width at the detector a person has to judge. */
function takeScale(shown: Film): void {
  if (record.peek().mm_per_pixel !== undefined) return;
  const told = scaleOfHeader(shown.header);
  if (told.kind === "known" && told.plane === "patient") {
    takeHeader(told);
    panel.value = "landmarks";
  } else {
    panel.value = "scale";
  }
}

async function openCase(file: File): Promise<void> {
  const [first, ...others] = await readCases(file);
  if (!first) return;
  const { kind } = first.record;
  const analyses = usualAnalyses(folder.peek()?.analyses(kind) ?? []);
  batch(() => {
    beginCase(documentOf(first.record, analyses));
    showNoFilm();
    fit();
    panel.value = "results";
  });
  const remarks = [...first.remarks.map(({ message }) => message), ...first.notes];
  if (first.record.image) remarks.push(words.peek().filmOfCase(first.record.image));
  if (others.length > 0) remarks.push(words.peek().firstOf(others.length + 1));
  if (remarks.length > 0) say(remarks.join("\n"));
}

export async function readCases(file: File): Promise<ReadCase[]> {
  const ready = engine.peek();
  if (!ready) throw new Error(words.peek().notReady);
  return ready.readCases(file.name, new Uint8Array(await file.arrayBuffer()), { language: language.peek() });
}

/** Landmarks that the page had constructed are constructed anew. */
export function documentOf(read: EngineCase, analyses: readonly string[]): Document {
  const made = read["x-constructed"];
  const names = new Set(Array.isArray(made) ? made : []);
  const { "x-constructed": _made, ...rest } = read;
  const landmarks = Object.fromEntries(Object.entries(read.landmarks).filter(([name]) => !names.has(name)));
  const empty = emptyDocument(read.kind, analyses);
  const known: Case = { ...rest, landmarks };
  return { ...empty, work: { ...empty.work, case: known, scale: known.mm_per_pixel === undefined ? null : { kind: "case" } } };
}

/** A clinic's own analyses, in place of those that ship. */
export async function openAnalyses(files: readonly File[]): Promise<void> {
  const ready = engine.peek();
  if (!ready || files.length === 0) return;
  try {
    const named = await Promise.all(
      files.map(async (file) => ({ name: file.webkitRelativePath || file.name, bytes: new Uint8Array(await file.arrayBuffer()) })),
    );
    const opened = ready.openFolder(named);
    folder.value = opened;
    const { kind, analyses } = { kind: work.peek().case.kind, analyses: opened.analyses(work.peek().case.kind) };
    if (!analyses.some(({ name }) => work.peek().analyses.includes(name))) {
      history.change((now) => ({ ...now, analyses: opened.analyses(kind).map(({ name }) => name) }));
    }
  } catch (error) {
    sayError(error);
  }
}
