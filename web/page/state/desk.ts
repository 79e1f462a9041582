// What lies on the desk: the case that is worked on, its film, and what the whole page shares beside them.
import { computed, signal } from "@preact/signals";
import type { Analysis, AnalysisFolder, Engine, LandmarkInfo } from "../../engine/engine.js";
import type { Film } from "../film/film.ts";
import { type Kind, emptyDocument } from "./document.ts";
import { History } from "./history.ts";

export const history = new History(emptyDocument("lateral", []));
export const work = computed(() => history.document.value.work);
export const view = computed(() => history.document.value.view);
export const record = computed(() => work.value.case);
export const kind = computed<Kind>(() => record.value.kind);
export const scale = computed(() => record.value.mm_per_pixel ?? null);

/** null until the module has been made ready, which takes a moment after the first paint. */
export const engine = signal<Engine | null>(null);
/** The analyses that ship, or the clinic's own. */
export const folder = signal<AnalysisFolder | null>(null);

/** The film as its file has it, and the file. */
export const film = signal<Film | null>(null);
export const filmFile = signal<File | null>(null);

export const analysesOfKind = computed<readonly Analysis[]>(() => folder.value?.analyses(kind.value) ?? []);
/** Computed apart, so that it stays the same list while a landmark is dragged. */
export const chosenNames = computed(() => work.value.analyses);
export const skippedNames = computed(() => work.value.skipped);
export const orientation = computed(() => work.value.orientation);
export const scaleOrigin = computed(() => work.value.scale);
/** Whose norms count; undefined: those that each analysis has. */
export const population = computed(() => record.value.population);
export const chosenAnalyses = computed<readonly Analysis[]>(() => {
  const names = chosenNames.value;
  const chosen = analysesOfKind.value.filter((analysis) => names.includes(analysis.name));
  return engine.value?.forPopulation(chosen, population.value) ?? chosen;
});

export const landmarkTable = computed<readonly LandmarkInfo[]>(() => engine.value?.landmarks(kind.value) ?? []);
/** Those that a case has in its table; particular analyses' own are the person's. */
export const landmarkNames = computed<ReadonlySet<string>>(() => new Set(landmarkTable.value.filter((info) => !info.own).map((info) => info.name)));
const landmarksByName = computed(() => new Map(landmarkTable.value.map((info) => [info.name, info])));

export function landmarkInfo(name: string): LandmarkInfo | undefined {
  return landmarksByName.value.get(name);
}

/** What the pointer does on the film. */
export type Tool = "place" | "calibrate" | "window";
export const tool = signal<Tool>("place");

/** The row of the results that is shown on the film; null: none. */
export const shownRow = signal<number | null>(null);

/** Said to whoever can't see the page. */
export const announcement = signal("");
