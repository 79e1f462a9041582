// @ts-check
import { told } from "./answer.js";
import { arcOf } from "./arc.js";

/** @import { Analysis, Case, Engine, Registration, Row, Session, Shape, TracingOptions } from "./engine.js" */

/** @type {Registration[]} */
const registrations = ["cranial-base", "palatal-plane", "mandibular-plane"];

/** @param {readonly Analysis[]} analyses */
export const idsOf = (analyses) => JSON.stringify(analyses.map((analysis) => analysis.id));

/** @param {TracingOptions} options */
function wishOf({ mode, outlines, folder }) {
  return JSON.stringify({ mode: mode === null ? null : mode?.id, outlines, folder: folder?.id });
}

/**
 * @param {any} raw the module
 * @param {Engine} engine
 * @param {Case} first
 * @returns {Session}
 */
export function sessionOf(raw, engine, first) {
  /** @type {number} */
  const id = told(raw.newSession(JSON.stringify(first)));
  /** @type {readonly Analysis[]} */
  let chosen = [];
  /** @type {readonly Row[]} */
  let rows = [];
  /** @type {readonly string[]} */
  let neededLandmarks = [];

  return {
    kind: first.kind,

    record() {
      return told(raw.record(id));
    },

    setRecord(record) {
      told(raw.setRecord(id, JSON.stringify(record)));
    },

    place(name, x, y) {
      told(raw.place(id, name, x, y));
    },

    remove(name) {
      told(raw.remove(id, name));
    },

    choose(analyses) {
      told(raw.choose(id, idsOf(analyses)));
      chosen = [...analyses];
      rows = analyses.flatMap((analysis) => analysis.items.map((item) => ({ analysis, item })));
      const needed = new Set(analyses.flatMap((analysis) => analysis.landmarks));
      const table = engine.landmarks(first.kind).map((landmark) => landmark.name);
      const others = [...needed].filter((name) => !table.includes(name));
      neededLandmarks = [...table.filter((name) => needed.has(name)), ...others];
    },

    get rows() {
      return rows;
    },

    get neededLandmarks() {
      return neededLandmarks;
    },

    measure() {
      const [value, mean, sd, deviation, state, count] = told(raw.measure(id));
      const buffer = raw.HEAPU8.buffer;
      /** @param {number} address */
      const numbers = (address) => new Float64Array(buffer, address, count);
      return {
        value: numbers(value),
        mean: numbers(mean),
        sd: numbers(sd),
        deviation: numbers(deviation),
        state: new Uint8Array(buffer, state, count),
      };
    },

    texts(language, some) {
      return some?.length === 0 ? [] : told(raw.texts(id, JSON.stringify(some ?? []), language));
    },

    errors(language, some) {
      return told(raw.errors(id, JSON.stringify(some ?? []), language));
    },

    outliers(language) {
      return told(raw.outliers(id, language));
    },

    remarks(language) {
      return told(raw.remarks(id, language));
    },

    norms(language) {
      const norms = told(raw.norms(id, language));
      return chosen.map((analysis, place) => ({ analysis, ...norms[place] }));
    },

    shapes(row) {
      /** @type {Omit<Shape, "arc">[]} */
      const shapes = told(raw.shapes(id, row));
      return shapes.map((shape) => ({ ...shape, arc: arcOf(shape) }));
    },

    construct(expression) {
      return told(raw.construct(id, expression));
    },

    constructed() {
      const { landmarks, virtual = {} } = this.record();
      /** @type {{ name: string, x: number, y: number }[]} */
      const ofCase = told(raw.constructed(id));
      const made = ofCase.map((point) => ({ ...point, expression: virtual[point.name] ?? "" }));
      for (const { name, construction } of engine.landmarks(first.kind)) {
        if (!construction || name in landmarks) continue;
        const point = this.construct(construction.expression);
        if (point) made.push({ name, ...point, expression: construction.expression });
      }
      return made;
    },

    suggest(name) {
      return told(raw.suggest(id, name));
    },

    tracing(options) {
      return told(raw.tracing(id, wishOf(options)));
    },

    tracingSvg({ film, style, ...options }) {
      const dark = style ? style === "film" : film !== undefined;
      return told(raw.tracingSvg(id, wishOf(options), film, dark));
    },

    superimpose(earlier, on, options) {
      return told(raw.superimpose(id, JSON.stringify(earlier), registrations.indexOf(on), wishOf(options)));
    },

    growth(language) {
      return told(raw.growth(id, language));
    },

    delete() {
      told(raw.deleteSession(id));
    },
  };
}
