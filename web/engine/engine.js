// engine.d.ts's face of the module (module.cpp): JSON in and out, errors thrown, numbers as views.
import createModule from "../../build/engine/web/engine/module.mjs";
import packed from "../../build/engine/web/engine/wasm.mjs";
import documents from "../../build/engine/web/engine/landmarks.mjs";
import { formulaPoints, landmarkTable } from "./landmarks.js";

export class EngineError extends Error {
  constructor({ message, ...where }) {
    super(message);
    this.name = "EngineError";
    Object.assign(this, { key: "", names: [] }, where);
  }
}

export const RowState = Object.freeze({
  heading: 0,
  value: 1,
  text: 2,
  missing: 3,
  noFormula: 4,
  notFinite: 5,
  differsBySex: 6,
  atOnePlace: 7,
  parallel: 8,
  differsByBand: 9,
  noScale: 10,
});

const registrations = ["cranial-base", "palatal-plane", "mandibular-plane"];

export async function loadEngine() {
  const bytes = Uint8Array.from(atob(packed), (character) => character.charCodeAt(0));
  const unpacked = new Blob([bytes]).stream().pipeThrough(new DecompressionStream("gzip"));
  const wasmBinary = new Uint8Array(await new Response(unpacked).arrayBuffer());
  return new Engine(await createModule({ wasmBinary }));
}

function told(answer) {
  if (answer.startsWith("!")) throw new EngineError(JSON.parse(answer.slice(1)));
  return JSON.parse(answer);
}

const idsOf = (analyses) => JSON.stringify(analyses.map((analysis) => analysis.id));

function wishOf({ mode, outlines, folder }) {
  return JSON.stringify({ mode: mode === null ? null : mode?.id, outlines, folder: folder?.id });
}

class AnalysisFolder {
  #raw;
  #analyses;
  #modes;

  constructor(raw, id) {
    this.#raw = raw;
    this.id = id;
    const { problems, analyses, families, modes } = told(raw.folder(id));
    this.problems = problems;
    const numbered = new Map(analyses.map((analysis) => [analysis.id, analysis]));
    for (const analysis of analyses) analysis.variants = [];
    this.#analyses = families.map(({ base, variants }) => {
      const analysis = numbered.get(base);
      analysis.variants = variants.map((variant) => numbered.get(variant));
      return analysis;
    });
    this.#modes = modes;
  }

  analyses(kind) {
    return this.#analyses.filter((analysis) => analysis.kind === kind);
  }

  modes(kind) {
    return this.#modes.filter((mode) => mode.kind === kind);
  }

  populations(kind) {
    const all = this.analyses(kind).flatMap((analysis) => [analysis, ...analysis.variants]);
    const named = new Map(all.map(({ population }) => [population?.name, population]));
    named.delete(undefined);
    return [...named.values()].sort((a, b) => (a.name < b.name ? -1 : 1));
  }

  delete() {
    told(this.#raw.close(this.id));
  }
}

class Engine {
  #raw;
  #shipped;
  #landmarks = new Map();

  constructor(raw) {
    this.#raw = raw;
    Object.assign(this, told(raw.constants()));
  }

  shippedFolder() {
    return (this.#shipped ??= new AnalysisFolder(this.#raw, 0));
  }

  openFolder(files) {
    return new AnalysisFolder(this.#raw, told(this.#raw.open(files)));
  }

  landmarks(kind) {
    if (!this.#landmarks.has(kind)) {
      const names = told(this.#raw.landmarkTable(kind));
      const face = this.averageFace(kind);
      this.#landmarks.set(kind, landmarkTable(documents, kind, names, face?.landmarks ?? []));
    }
    return this.#landmarks.get(kind);
  }

  formulaPoints(kind) {
    return formulaPoints[kind];
  }

  averageFace(kind) {
    return told(this.#raw.face(kind));
  }

  readCases(name, bytes, options = {}) {
    return told(this.#raw.read(name, bytes, JSON.stringify(options)));
  }

  writeCase(record, format) {
    const { text, lost } = told(this.#raw.write(JSON.stringify(record), format));
    return { bytes: new TextEncoder().encode(text), lost };
  }

  measure(record) {
    return new Session(this.#raw, told(this.#raw.newSession(JSON.stringify(record))), this);
  }

  forPopulation(analyses, population) {
    const wanted = population?.toLowerCase();
    const has = (analysis) => wanted && analysis.population?.name.toLowerCase() === wanted;
    return analyses.map((analysis) => (has(analysis) ? analysis : analysis.variants.find(has) ?? analysis));
  }

  populationNamed(text) {
    return told(this.#raw.populationNamed(text));
  }

  compose(title, items) {
    const places = items.map(({ analysis, item }) => [analysis.id, analysis.items.indexOf(item)]);
    return new Uint8Array(told(this.#raw.compose(title, JSON.stringify(places))));
  }

  compareReadings(first, second, analyses) {
    const found = told(this.#raw.compareReadings(JSON.stringify(first), JSON.stringify(second), idsOf(analyses)));
    const values = found.values.map((value) => {
      const analysis = analyses[value.analysis];
      return { ...value, analysis, item: analysis.items[value.item] };
    });
    return { ...found, values };
  }

  study(films, analyses) {
    return told(this.#raw.study(JSON.stringify(films), idsOf(analyses), "json"));
  }

  studyCsv(films, analyses) {
    return told(this.#raw.study(JSON.stringify(films), idsOf(analyses), "csv"));
  }

  readDate(text) {
    return told(this.#raw.readDate(text));
  }

  showDate(date, language) {
    return told(this.#raw.showDate(date, language));
  }

  age(birth, film, language) {
    return told(this.#raw.age(birth, film, language));
  }

  eras() {
    return told(this.#raw.eras());
  }

  report(films, analyses, language) {
    return told(this.#raw.report(filmsOf(films), idsOf(analyses), language));
  }

  chart(films, analyses, language) {
    return told(this.#raw.chart(filmsOf(films), idsOf(analyses), language));
  }

  resultsCsv(records, analyses, language = "en") {
    return told(this.#raw.results(JSON.stringify(records), idsOf(analyses), "csv", language));
  }

  resultsJson(records, analyses, language = "en") {
    return told(this.#raw.results(JSON.stringify(records), idsOf(analyses), "json", language));
  }
}

function filmsOf(films) {
  return films.map(({ record, film }) => ({ record: JSON.stringify(record), film }));
}

class Session {
  #raw;
  #id;
  #engine;
  rows = [];
  neededLandmarks = [];

  constructor(raw, id, engine) {
    this.#raw = raw;
    this.#id = id;
    this.#engine = engine;
    this.kind = this.record().kind;
  }

  record() {
    return told(this.#raw.record(this.#id));
  }

  setRecord(record) {
    told(this.#raw.setRecord(this.#id, JSON.stringify(record)));
  }

  place(name, x, y) {
    told(this.#raw.place(this.#id, name, x, y));
  }

  remove(name) {
    told(this.#raw.remove(this.#id, name));
  }

  setScale(mmPerPixel) {
    told(this.#raw.setScale(this.#id, mmPerPixel ?? -1));
  }

  choose(analyses) {
    told(this.#raw.choose(this.#id, idsOf(analyses)));
    this.rows = analyses.flatMap((analysis) => analysis.items.map((item) => ({ analysis, item })));
    this.analyses = [...analyses];
    const needed = new Set(analyses.flatMap((analysis) => analysis.landmarks));
    const table = this.#engine.landmarks(this.kind).map((landmark) => landmark.name);
    const others = [...needed].filter((name) => !table.includes(name));
    this.neededLandmarks = [...table.filter((name) => needed.has(name)), ...others];
  }

  measure() {
    const [value, mean, sd, deviation, state, count] = told(this.#raw.measure(this.#id));
    const buffer = this.#raw.HEAPU8.buffer;
    const numbers = (address) => new Float64Array(buffer, address, count);
    return {
      value: numbers(value),
      mean: numbers(mean),
      sd: numbers(sd),
      deviation: numbers(deviation),
      state: new Uint8Array(buffer, state, count),
    };
  }

  texts(language, rows) {
    return rows?.length === 0 ? [] : told(this.#raw.texts(this.#id, JSON.stringify(rows ?? []), language));
  }

  errors(language, rows) {
    return told(this.#raw.errors(this.#id, JSON.stringify(rows ?? []), language));
  }

  outliers(language) {
    return told(this.#raw.outliers(this.#id, language));
  }

  remarks(language) {
    return told(this.#raw.remarks(this.#id, language));
  }

  norms(language) {
    const norms = told(this.#raw.norms(this.#id, language));
    return norms.map((norm, place) => ({ analysis: this.analyses[place], ...norm }));
  }

  shapes(row) {
    return told(this.#raw.shapes(this.#id, row)).map((shape) => ({ ...shape, arc: arcOf(shape) }));
  }

  construct(expression) {
    return told(this.#raw.construct(this.#id, expression));
  }

  constructed() {
    const { landmarks, virtual = {} } = this.record();
    const made = told(this.#raw.constructed(this.#id)).map((point) => ({ ...point, expression: virtual[point.name] }));
    for (const { name, construction } of this.#engine.landmarks(this.kind)) {
      if (!construction || name in landmarks) continue;
      const point = this.construct(construction.expression);
      if (point) made.push({ name, ...point, expression: construction.expression });
    }
    return made;
  }

  suggest(name) {
    return told(this.#raw.suggest(this.#id, name));
  }

  tracing(options) {
    return told(this.#raw.tracing(this.#id, wishOf(options)));
  }

  tracingSvg({ film, style, ...options }) {
    const dark = style ? style === "film" : film !== undefined;
    return told(this.#raw.tracingSvg(this.#id, wishOf(options), film, dark));
  }

  superimpose(earlier, on, options) {
    const line = registrations.indexOf(on);
    return told(this.#raw.superimpose(this.#id, JSON.stringify(earlier), line, wishOf(options)));
  }

  growth(language) {
    return told(this.#raw.growth(this.#id, language));
  }

  delete() {
    told(this.#raw.deleteSession(this.#id));
  }
}

/** Where the lines a-b and c-d meet; null for parallel ones. */
function crossing(a, b, c, d) {
  const ab = { x: b.x - a.x, y: b.y - a.y };
  const cd = { x: d.x - c.x, y: d.y - c.y };
  const across = ab.x * cd.y - ab.y * cd.x;
  if (across === 0) return null;
  const along = ((c.x - a.x) * cd.y - (c.y - a.y) * cd.x) / across;
  return { x: a.x + along * ab.x, y: a.y + along * ab.y };
}

const direction = (from, to) => Math.atan2(to.y - from.y, to.x - from.x);

function arcOf({ kind, points }) {
  if (kind === "angle") {
    const [first, vertex, second] = points;
    return { at: vertex, from: direction(vertex, first), to: direction(vertex, second) };
  }
  if (kind !== "line_angle") return null;
  const [a, b, c, d] = points;
  const at = crossing(a, b, c, d);
  return at && { at, from: direction(a, b), to: direction(c, d) };
}
