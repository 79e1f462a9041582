// @ts-check
// What is known of the landmarks, read off the tables of docs/landmarks.md and docs/landmarks.ja.md.

/** @import { InBoth, Kind, LandmarkInfo } from "./engine.js" */

/**
 * Landmarks that others make, by expressions of the formula language, as textbooks construct them.
 * @type {Record<Kind, Record<string, LandmarkInfo["construction"]>>}
 */
const constructions = {
  lateral: {
    // The crossing of the facial plane with the mandibular plane: Ricketts, McNamara.
    Gn: { expression: "cross([N],[Pog],[Me],[Go(L)])", from: ["N", "Pog", "Me", "Go(L)"] },
    // The middle of the ramus, by lines square and parallel to Frankfort through four points of its outline. Those are
    // placed for nothing else, so whoever has not placed them places Xi.
    Xi: {
      expression: "vertical(mid([R3],[R4]),mid([R1],[R2]),vertical(mid([R1],[R2]),[Po],[Or]))",
      from: ["R1", "R2", "R3", "R4", "Po", "Or"],
      optional: true,
    },
    // The crossing of the tangents of the ramus and the lower border.
    Go: { expression: "cross([Ar],[Go(P)],[Me],[Go(L)])", from: ["Ar", "Go(P)", "Me", "Go(L)"] },
  },
  frontal: {},
  model: {},
};

/**
 * Points that formulas construct and that are no landmarks, as Ricketts' analysis makes them.
 * @type {Record<Kind, { name: string, expression: string }[]>}
 */
export const formulaPoints = {
  lateral: [
    // Centre of the cranium: the facial axis crosses Ba-N.
    { name: "CC", expression: "cross([Ba],[N],[PT],cross([N],[Pog],[Go(L)],[Me]))" },
    // Centre of the face: the pterygoid vertical crosses the Frankfort plane.
    { name: "CF", expression: "vertical([PTV],[Po],[Or])" },
  ],
  frontal: [],
  model: [],
};

const headings = {
  en: { lateral: "## Lateral film", frontal: "## Frontal film", model: "## Dental cast" },
  ja: { lateral: "## 側面セファロ", frontal: "## 正面セファロ", model: "## 歯列模型" },
};

/**
 * "Sella (セラ(トルコ鞍中心点))": the Japanese stands in the last brackets, which may hold others.
 * @param {string} text
 */
export function titlesOf(text) {
  if (!text.endsWith(")")) return { en: text, ja: text };
  let depth = 0;
  let at = text.length;
  do {
    --at;
    if (text[at] === ")") ++depth;
    if (text[at] === "(") --depth;
  } while (depth > 0 && at > 0);
  return { en: text.slice(0, at).trim(), ja: text.slice(at + 1, -1) };
}

/**
 * The rows of the tables beneath headings that begin so, by landmark.
 * @param {string} document
 * @param {string} heading
 */
function rowsOf(document, heading) {
  /** @type {Map<string, string[]>} */
  const rows = new Map();
  for (const section of document.split(/^(?=## )/m).filter((each) => each.startsWith(heading)))
    for (const line of section.split("\n").filter((each) => /^\| (?!name|名前)/.test(each))) {
      const [names = "", ...cells] = line.trim().slice(1, -1).split("|").map((cell) => cell.trim());
      for (const name of names.replace(" *", "").split(/[,;] */)) rows.set(name, cells);
    }
  return rows;
}

/**
 * @param {InBoth} documents
 * @param {Kind} kind
 * @param {string[]} names those of its table
 * @returns {LandmarkInfo[]}
 */
export function landmarkTable(documents, kind, names) {
  const rows = rowsOf(documents.en, headings.en[kind]);
  const japanese = rowsOf(documents.ja, headings.ja[kind]);
  const own = [...rows].flatMap(([name, { length }]) => ((length === 4 || toothPoint.test(name)) && !names.includes(name) ? [name] : []));
  return [...names, ...own].map((name) => {
    const [title = "", ...cells] = toothPoint.test(name) ? [toothTitle(name)] : (rows.get(name) ?? []);
    const titles = titlesOf(title);
    let [definition = "", howFound = ""] = cells;
    let [definitionJa = "", howFoundJa = ""] = japanese.get(name) ?? [];
    if (cells.length !== 3) {
      // Those of casts have a title alone.
      if (!toothPoint.test(name)) titles.ja = definitionJa;
      definition = howFound = definitionJa = howFoundJa = "";
    }
    return {
      name,
      title: titles,
      definition: { en: definition, ja: definitionJa },
      howFound: { en: howFound, ja: howFoundJa },
      constructed: howFound.startsWith("Constructed:"),
      construction: constructions[kind][name] ?? null,
      own: !names.includes(name),
    };
  });
}

const toothPoint = /^(\d\d)([mdcfl])$/;
/** @type {Record<string, [english: string, japanese: string]>} */
const toothPlaces = {
  m: ["mesial", "近心"],
  d: ["distal", "遠心"],
  c: ["cusp tip", "咬頭頂"],
  f: ["facial", "唇側"],
  l: ["lingual", "舌側"],
};

/**
 * "16m": the mesial contact point of tooth 16.
 * @param {string} name
 */
function toothTitle(name) {
  const [, number = "", place = ""] = toothPoint.exec(name) ?? [];
  const [english, japanese] = toothPlaces[place] ?? ["", ""];
  return `${number}, ${english} (${number} ${japanese})`;
}
