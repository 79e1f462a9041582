// The module and the program give the same doubles, bit for bit, and the same documents.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import test from "node:test";
import { fileURLToPath } from "node:url";
import { loadEngine } from "../../engine/engine.js";
import { randomFaces, sample, sampleNames } from "./faces.mjs";

const cephtool = process.env.CEPHTOOL ?? fileURLToPath(new URL("../../../build/release/bin/cephtool", import.meta.url));
const engine = await loadEngine();
const folder = engine.shippedFolder();

/** The program's document on these cases. */
function natively(faces, ...more) {
  const place = mkdtempSync(join(tmpdir(), "engine-"));
  try {
    const files = faces.map((face, number) => {
      const file = join(place, `${number}.json`);
      writeFileSync(file, JSON.stringify(face));
      return file;
    });
    const options = { encoding: "utf8", maxBuffer: 2 ** 30, stdio: ["ignore", "pipe", "ignore"] };
    return JSON.parse(execFileSync(cephtool, ["analyze", "--format", "json", ...more, ...files], options));
  } finally {
    rmSync(place, { recursive: true });
  }
}

const measures = ["value", "mean", "sd", "deviation"];

/** How many doubles were compared. */
function compare(session, face, native, withErrors = false) {
  session.setRecord(face);
  const numbers = session.measure();
  const errors = new Map(withErrors ? session.errors("en").rows.map((error) => [error.row, error]) : []);
  let compared = 0;
  for (const analysis of native.analyses) {
    let row = session.rows.findIndex(
      (each) => each.analysis.kind === analysis.kind && `${each.analysis.name}.txt` === analysis.file,
    );
    assert.ok(row >= 0, analysis.file);
    for (const item of analysis.items) {
      while (session.rows[row].item.heading) ++row;
      assert.equal(session.rows[row].item.name, item.name);
      for (const measure of measures) {
        const [here, there] = [numbers[measure][row], item[measure] ?? NaN];
        assert.ok(Object.is(here, there), `${analysis.file} ${item.name} ${measure}: ${here}, natively ${there}`);
        ++compared;
      }
      if (item.error) {
        const here = errors.get(row);
        const [error, words] = [here.error, here.words.join("; ")];
        assert.deepEqual({ error, words, assumed: here.assumed }, { error: item.error.value, words: item.error.text, assumed: item.error.assumed ?? [] }, `${analysis.file} ${item.name}`);
        ++compared;
      }
      ++row;
    }
  }
  for (const { title, kind } of native.left_out.map((each) => ({ ...each, kind: native.kind })))
    for (const [row, { analysis, item }] of session.rows.entries())
      if (analysis.title === title && analysis.kind === kind && !item.heading) assert.ok(Number.isNaN(numbers.value[row]));
  return compared;
}

function sessions() {
  const all = {};
  for (const kind of ["lateral", "frontal", "model"]) {
    all[kind] = engine.measure({ format: "cephtool-case", version: 1, kind, landmarks: {} });
    all[kind].choose(folder.analyses(kind));
  }
  return all;
}

test("all shipped analyses of 1,000 random faces have the program's bits", () => {
  const by = sessions();
  const faces = randomFaces(1000, 20261122);
  let compared = 0;
  for (let from = 0; from < faces.length; from += 50) {
    const some = faces.slice(from, from + 50);
    for (const [place, native] of natively(some).cases.entries())
      compared += compare(by[some[place].kind], some[place], native);
  }
  assert.ok(compared > 500_000, `${compared} doubles`);
});

test("the samples' documents are the program's", () => {
  for (const name of sampleNames) {
    const face = sample(name);
    const [native] = natively([face]).cases;
    assert.ok(compare(sessions()[face.kind], face, native) > 0);
    const document = JSON.parse(engine.resultsJson([face], folder.analyses(face.kind))).cases[0];
    // The program leaves out analyses without any result.
    document.analyses = document.analyses.filter((analysis) => !native.left_out.some((left) => left.title === analysis.title));
    for (const part of [native, document]) {
      delete part.left_out;
      delete part.file;
    }
    assert.deepEqual(document, native);
  }
});

test("errors of values, and landmarks far from where they are expected, are the program's", () => {
  const all = sessions();
  const [frontal, slip, ...others] = ["frontal-average.json", "lateral-class2.json", ...sampleNames].map(sample);
  frontal.landmarks.Me[0] += 400;
  slip.landmarks.Go[0] += 250;
  for (const face of [frontal, slip, ...others, ...randomFaces(20, 1922)]) {
    const [native] = natively([face], "--error").cases;
    const session = all[face.kind];
    assert.ok(compare(session, face, native, true) > 0);
    const of = native.remarks.filter(({ code }) => code.startsWith("errors")).map(({ text }) => text);
    assert.deepEqual(new Set(session.errors("en").remarks), new Set(of));
    const far = native.remarks.filter(({ code }) => code === "landmark_far").map(({ text }) => text);
    assert.deepEqual(session.outliers("en").map(({ text }) => text), far);
    if (face === slip) assert.match(far.join(), /^Go lies 25 mm/);
    if (face === frontal) assert.match(far.join(), /^Me lies/);
  }
  all.lateral.setRecord({ ...all.lateral.record(), mm_per_pixel: undefined });
  assert.deepEqual(all.lateral.errors("en"), { remarks: [], rows: [] });
});
