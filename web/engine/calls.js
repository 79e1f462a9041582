// @ts-check
// engine.d.ts's face of the module (module.cpp): JSON in and out, errors thrown, numbers as views.
import { told } from "./answer.js";
import { folderOf } from "./folder.js";
import { formulaPoints, landmarkTable } from "./landmarks.js";
import { idsOf, sessionOf } from "./session.js";

/** @import { Analysis, AnalysisFolder, Engine, Kind, LandmarkInfo, ReadingComparison, ReportFilm } from "./engine.js" */

/** @param {readonly ReportFilm[]} films */
function filmsOf(films) {
  return films.map(({ record, film }) => ({ record: JSON.stringify(record), film }));
}

/**
 * @param {any} raw the module
 * @param {{ en: string, ja: string }} documents docs/landmarks.md in both languages
 * @returns {Engine}
 */
export function engineOf(raw, documents) {
  /** @type {AnalysisFolder | undefined} */
  let shipped;
  /** @type {Map<Kind, readonly LandmarkInfo[]>} */
  const landmarks = new Map();
  /** @type {Pick<Engine, "version" | "dentalStages" | "caseFormats">} */
  const constants = told(raw.constants());

  return {
    ...constants,

    shippedFolder() {
      return (shipped ??= folderOf(raw, 0));
    },

    openFolder(files) {
      return folderOf(raw, told(raw.open(files)));
    },

    landmarks(kind) {
      const known = landmarks.get(kind);
      if (known) return known;
      const made = landmarkTable(documents, kind, told(raw.landmarkTable(kind)));
      landmarks.set(kind, made);
      return made;
    },

    formulaPoints(kind) {
      return formulaPoints[kind];
    },

    averageFace(kind) {
      return told(raw.face(kind));
    },

    readCases(name, bytes, options = {}) {
      return told(raw.read(name, bytes, JSON.stringify(options)));
    },

    writeCase(record, format) {
      const { text, lost } = told(raw.write(JSON.stringify(record), format));
      return { bytes: new TextEncoder().encode(text), lost };
    },

    measure(record) {
      return sessionOf(raw, this, record);
    },

    readDate(text) {
      return told(raw.readDate(text));
    },

    showDate(date, language) {
      return told(raw.showDate(date, language));
    },

    age(birth, film, language) {
      return told(raw.age(birth, film, language));
    },

    report(films, analyses, language) {
      return told(raw.report(filmsOf(films), idsOf(analyses), language));
    },

    chart(films, analyses, language) {
      return told(raw.chart(filmsOf(films), idsOf(analyses), language));
    },

    resultsCsv(records, analyses, language = "en") {
      return told(raw.results(JSON.stringify(records), idsOf(analyses), "csv", language));
    },

    resultsJson(records, analyses, language = "en") {
      return told(raw.results(JSON.stringify(records), idsOf(analyses), "json", language));
    },

    compareReadings(first, second, analyses) {
      const found = told(raw.compareReadings(JSON.stringify(first), JSON.stringify(second), idsOf(analyses)));
      /** @type {(Omit<ReadingComparison["values"][number], "analysis" | "item"> & { analysis: number, item: number })[]} */
      const values = found.values;
      return {
        ...found,
        values: values.map((value) => {
          const analysis = analyses[value.analysis];
          return { ...value, analysis, item: analysis?.items[value.item] };
        }),
      };
    },

    study(films, analyses) {
      return told(raw.study(JSON.stringify(films), idsOf(analyses), "json"));
    },

    studyCsv(films, analyses) {
      return told(raw.study(JSON.stringify(films), idsOf(analyses), "csv"));
    },

    forPopulation(analyses, population) {
      const wanted = population?.toLowerCase();
      /** @param {Analysis} analysis */
      const has = (analysis) => Boolean(wanted) && analysis.population?.name.toLowerCase() === wanted;
      return analyses.map((analysis) => (has(analysis) ? analysis : (analysis.variants.find(has) ?? analysis)));
    },

    compose(title, items) {
      const places = items.map(({ analysis, item }) => [analysis.id, analysis.items.indexOf(item)]);
      return new Uint8Array(told(raw.compose(title, JSON.stringify(places))));
    },
  };
}
