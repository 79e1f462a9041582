// Files that a person gives: films, cases, and a clinic's own analyses. Their content says what they are.
import { batch, signal } from "@preact/signals";
import type { Case as EngineCase, ReadCase } from "../../engine/engine.js";
import { beginsAsFilm } from "../film/decode.ts";
import type { Film } from "../film/film.ts";
import { readFilm } from "../film/reader.ts";
import { scaleOfHeader } from "../film/scale.ts";
import { type Sentence, wordsOf } from "../film/sentence.ts";
import { panel } from "../parts/panel_choice.ts";
import { beginGuide } from "../place/guide.ts";
import { usualAnalyses } from "../results/usual_analyses.ts";
import { engine, film, folder, history, record, work } from "../state/desk.ts";
import { type Case, type Document, emptyDocument } from "../state/document.ts";
import { choosing, withFacts } from "../state/work.ts";
import { takeHeader } from "../calibrate/scale_panel.tsx";
import { fit, focusFilm } from "../view/stage.ts";
import { alsoSay, alsoSayErrors, language, named, say, sayError, sayNothing, words } from "../words/words.ts";
import { showFilm, showNoFilm } from "./show_film.ts";
import { factsOfHeader } from "./film_facts.ts";
import { beginCase, keepBeside, keepFilm } from "./keeping.ts";

/** How many files are being read. */
export const opening = signal(0);

/** One film and one case are put together; of more cases the first is shown, the others go into the list of patients. */
export async function openFiles(files: readonly File[]): Promise<void> {
  ++opening.value;
  sayNothing();
  try {
    const films: File[] = [];
    const cases: File[] = [];
    const faults: unknown[] = []; // one file's must not stop the others
    for (const file of files) {
      try {
        const head = new Uint8Array(await file.slice(0, 1024).arrayBuffer());
        (beginsAsFilm(head) ? films : cases).push(file);
      } catch (error) {
        faults.push(named(error, file.name));
      }
    }
    await openCases(cases, faults);
    for (const [index, file] of films.entries()) {
      try {
        await openFilm(file);
      } catch (error) {
        faults.push(error);
        continue;
      }
      const rest = films.slice(index + 1);
      if (rest.length > 0) alsoSay(words.peek().firstTaken(rest.map(({ name }) => name).join(", ")));
      break;
    }
    if (faults.length > 0) alsoSayErrors(faults);
  } catch (error) {
    sayError(error);
  } finally {
    --opening.value;
  }
}

/** What is said of pictures that the program may read: of four inks, of 12 bits, packed as faxes are. */
const kindsForProgram = new Set<string>(["jpegDamaged", "tiffCompression", "tiffColour", "tiffSamples"]);

function isForProgram({ key, values }: Sentence): boolean {
  return kindsForProgram.has(key) || Object.values(values).some((value) => typeof value === "object" && isForProgram(value));
}

/** Landmarks without a film get this one, else it begins a new case. */
async function openFilm(file: File): Promise<void> {
  const read = await readFilm(file);
  if (read.kind === "error") {
    const wayOut = isForProgram(read.error) ? `\n${words.peek().asPng(file.name)}` : "";
    throw new Error(`${file.name}: ${wordsOf(read.error, language.peek())}${wayOut}`);
  }
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
  for (const doubt of read.film.header.doubts) alsoSay(wordsOf(doubt, language.peek()));
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

async function openCases(files: readonly File[], faults: unknown[]): Promise<void> {
  const tried = await Promise.allSettled(files.map(readCases));
  for (const each of tried) if (each.status === "rejected") faults.push(each.reason);
  const read = tried.flatMap((each) => (each.status === "fulfilled" ? each.value : []));
  const [first, ...others] = read.map(({ record: each }) => documentOf(each, usualAnalyses(folder.peek()?.analyses(each.kind) ?? [])));
  if (!first) return;
  const keepsOthers = keepBeside(others);
  batch(() => {
    beginCase(first);
    showNoFilm();
    fit();
    panel.value = "results";
  });
  const remarks = new Set(read.flatMap((each) => [...each.remarks.map(({ text }) => text), ...each.notes]));
  const { image } = first.work.case;
  const t = words.peek();
  if (image) remarks.add(t.filmOfCase(image));
  if (others.length > 0) remarks.add(keepsOthers ? t.othersKept(read.length) : t.firstOf(read.length));
  if (remarks.size > 0) say([...remarks].join("\n"));
}

/** A flat table, which has columns S_x, S_y, or JSON lines: cephtool measures them all at once. */
function holdsManyCases(bytes: Uint8Array): boolean {
  const lines = new TextDecoder().decode(bytes.subarray(0, 1 << 16)).split(/\r?\n/);
  const [first = "", second = ""] = lines.filter((line) => line.trim() !== "" && !line.startsWith("#"));
  return /(^|[,;\t"])[^,;\t"]+_x"?[,;\t]"?[^,;\t"]+_y"?([,;\t]|$)/.test(first) || (isObject(first) && isObject(second));
}

const isObject = (line: string): boolean => /^\{.*\}\s*$/.test(line);

export async function readCases(file: File): Promise<ReadCase[]> {
  const ready = engine.peek();
  if (!ready) throw new Error(words.peek().notReady);
  const bytes = new Uint8Array(await file.arrayBuffer());
  if (holdsManyCases(bytes)) throw new Error(words.peek().manyCases(file.name));
  try {
    return ready.readCases(file.name, bytes, { language: language.peek() });
  } catch (error) {
    throw named(error, file.name);
  }
}

/** Landmarks that the page had constructed are constructed anew. */
function documentOf(read: EngineCase, analyses: readonly string[]): Document {
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
    const names = opened.analyses(work.peek().case.kind).map(({ name }) => name);
    if (!names.some((name) => work.peek().analyses.includes(name))) history.change((now) => choosing(now, names));
  } catch (error) {
    sayError(error);
  }
}
