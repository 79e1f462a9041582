import assert from "node:assert/strict";
import { readFileSync } from "node:fs";
import test from "node:test";
import { EngineError, loadEngine, RowState } from "../../engine/engine.js";
import { titlesOf } from "../../engine/landmarks.js";
import { sample, sampleBytes, sampleNames } from "./faces.mjs";

const engine = await loadEngine();
const shipped = engine.shippedFolder();
const empty = (kind) => ({ format: "cephtool-case", version: 1, kind, landmarks: {} });
const bytesOf = (text) => new TextEncoder().encode(text);
const analysisFile = (path) => new Uint8Array(readFileSync(new URL(`../../../anaitem/${path}`, import.meta.url)));
const named = (name, kind = "lateral", folder = shipped) => folder.analyses(kind).find((each) => each.name === name);
const near = (a, b, by = 1e-6) => Math.hypot(a.x - b.x, a.y - b.y) <= by;

/** A session with a sample's case and these analyses. */
function measuring(file, ...names) {
  const record = sample(file);
  const session = engine.measure(record);
  session.choose(names.length ? names.map((name) => named(name, record.kind)) : shipped.analyses(record.kind));
  return session;
}
const rowOf = (session, name) => session.rows.findIndex((row) => row.item.name === name);

test("the shipped folder has analyses and modes of all kinds, their landmarks in the table's order", () => {
  for (const [kind, analyses, modes] of [["lateral", 24, 8], ["frontal", 2, 3], ["model", 3, 3]]) {
    assert.ok(shipped.analyses(kind).length >= analyses, kind);
    assert.ok(shipped.modes(kind).length >= modes, kind);
    const table = engine.landmarks(kind).filter(({ own }) => !own).map(({ name }) => name);
    for (const analysis of shipped.analyses(kind)) {
      const places = analysis.landmarks.map((name) => table.indexOf(name)).filter((place) => place >= 0);
      assert.ok(analysis.landmarks.length > 1, analysis.name);
      assert.deepEqual(places, [...places].sort((a, b) => a - b));
    }
  }
  assert.deepEqual(named("Wits").landmarks, ["A", "B", ...named("Wits").landmarks.slice(2)]);
});

test("landmarks have titles in both languages, and definitions", () => {
  for (const kind of ["lateral", "frontal"])
    for (const landmark of engine.landmarks(kind)) {
      for (const text of [landmark.definition, landmark.howFound])
        assert.ok(/[A-Za-z]{2}/.test(text.en) && /[\u3040-\u30ff\u4e00-\u9fff]/.test(text.ja), landmark.name);
      assert.equal(landmark.constructed, landmark.howFound.ja.startsWith("作図："), landmark.name);
      assert.match(landmark.title.ja, /[\u3040-\u30ff\u4e00-\u9fff]/, landmark.name);
      assert.doesNotMatch(landmark.title.en, /[\u3040-\u30ff\u4e00-\u9fff]/, landmark.name);
    }
  const sella = engine.landmarks("lateral")[0];
  assert.equal(sella.title.en, "Sella");
  assert.deepEqual(titlesOf("Base (spheno) (頭(蝶))"), { en: "Base (spheno)", ja: "頭(蝶)" });
  for (const { name, title } of engine.landmarks("model")) {
    assert.notEqual(title.en, name);
    assert.match(title.ja, /[\u3040-\u30ff\u4e00-\u9fff]/, name);
  }
});

test("Xi is constructed from R1 to R4 where they are placed", () => {
  const { landmarks } = engine.averageFace("lateral");
  const session = engine.measure(empty("lateral"));
  const { construction } = engine.landmarks("lateral").find((landmark) => landmark.name === "Xi");
  assert.ok(construction.optional);
  for (const name of construction.from) {
    assert.equal(session.construct(construction.expression), null, name);
    const { x, y } = landmarks.find((landmark) => landmark.name === name);
    session.place(name, x, y);
  }
  assert.ok(near(session.construct(construction.expression), landmarks.find((landmark) => landmark.name === "Xi"), 4));
});

test("moving a landmark changes what rests on it, at once", () => {
  const session = measuring("lateral-average.json", "Steiner");
  const sna = rowOf(session, "SNA");
  const before = session.measure().value[sna];
  session.place("A", 1500, 1322);
  const after = session.measure().value[sna];
  assert.ok(after < before);
  assert.equal(session.texts("en", [sna])[0].value, after.toFixed(1));
  session.remove("A");
  assert.equal(session.measure().state[sna], RowState.missing);
  assert.deepEqual(session.texts("en", [sna])[0].missing, ["A"]);
  session.setRecord(sample("lateral-average.json"));
  assert.equal(session.measure().value[sna], before);
});

test("without a scale lengths are left out, and angles keep their bits", () => {
  const session = measuring("lateral-class2.json");
  const scaled = session.measure();
  const [values, units] = [scaled.value.slice(), session.rows.map((row) => row.item.unit)];
  session.setRecord({ ...session.record(), mm_per_pixel: undefined });
  const bare = session.measure();
  let [angles, lengths] = [0, 0];
  for (const [row, unit] of units.entries()) {
    if (Number.isNaN(values[row]) || unit === "") continue;
    if (unit === "deg") assert.ok(++angles && Object.is(bare.value[row], values[row]), session.rows[row].item.name);
    if (unit === "mm" && values[row] !== 0) assert.ok(++lengths && bare.state[row] === RowState.noScale);
  }
  assert.ok(angles > 100 && lengths > 100);
  assert.ok(session.remarks("ja").some((remark) => remark.code === "no_scale" && /縮尺/.test(remark.text)));
  assert.equal(session.record().mm_per_pixel, undefined);
  assert.throws(() => session.tracingSvg({ outlines: "case" }), /no scale/);
  assert.ok(session.tracing({ outlines: "case" }).outlines.length > 10);
});

test("bad calls throw what the library says", () => {
  const session = measuring("lateral-average.json");
  const gone = engine.measure(empty("lateral"));
  gone.delete();
  for (const [call, message] of [
    [() => session.place("much too long", 1, 1), /five bytes|too long|bytes/],
    [() => session.place("S", 0, 0), /not placed/],
    [() => session.place("S", NaN, 1), /range/],
    [() => session.setRecord({ ...session.record(), mm_per_pixel: 0 }), /wide/],
    [() => session.choose(shipped.analyses("frontal")), /frontal/],
    [() => session.setRecord(sample("frontal-average.json")), /frontal/],
    [() => engine.measure({ ...empty("lateral"), sex: "x" }), /sex|"x"/],
    [() => engine.readDate("31.2.2020"), /31/],
    [() => engine.age("2024-03-05", "2020-01-01", "en"), /before birth/],
    [() => gone.measure(), /deleted/],
  ])
    assert.throws(call, (error) => error instanceof EngineError && message.test(error.message), `${call}`);
  assert.ok(session.measure().value.some(Number.isFinite));
});

test("every format gives back the landmarks that it was given", () => {
  for (const name of sampleNames)
    for (const { name: format, extension } of engine.caseFormats) {
      const record = sample(name);
      if (format === "challenge" && name !== "lateral-average.json") continue;
      const { bytes, lost } = engine.writeCase(record, format);
      const options = { mmPerPixel: record.mm_per_pixel };
      const [again] = engine.readCases(`again${extension}`, bytes, options);
      if (record.virtual) assert.equal(lost.includes("virtual landmarks"), format !== "json");
      for (const [landmark, [x, y]] of Object.entries(again.record.landmarks))
        assert.ok(near({ x, y }, { x: record.landmarks[landmark][0], y: record.landmarks[landmark][1] }), landmark);
      const count = Object.keys(again.record.landmarks).length;
      assert.equal(count, format === "challenge" ? 19 : Object.keys(record.landmarks).length, `${name} ${format}`);
    }
});

test("a damaged case is told with its place", () => {
  const text = JSON.stringify(sample("lateral-average.json"), null, 2);
  for (let cut = 0; cut < 1500; cut += 37)
    assert.throws(() => engine.readCases("a.json", bytesOf(text.slice(0, cut))), EngineError, `${cut}`);
  assert.throws(
    () => engine.readCases("a.json", bytesOf(text.replace('"S"', '"SS SS SS"'))),
    (error) => error.file === "a.json" && error.line > 1 && error.column > 1 && error.excerpt.includes("SS SS"),
  );
  assert.throws(() => engine.readCases("a.json", new Uint8Array([0xff, 0xfe, 0])), EngineError);
});

test("a clinic's own folder is checked, measured with, and closed", () => {
  const slip = "title:\r\nOurs\r\nCalc:\r\nSNA=angle1([S],[N],[A])\r\nSlip=angle1([S],[n],[A])\r\n";
  const folder = engine.openFolder([
    { name: "clinic/CalcForm/list.txt", bytes: bytesOf("Ours.txt\r\nSteiner.txt\r\n") },
    { name: "clinic/CalcForm/Ours.txt", bytes: bytesOf(slip) },
    { name: "clinic/CalcForm/Steiner.txt", bytes: analysisFile("CalcForm/Steiner.txt") },
  ]);
  const problem = folder.problems.find((each) => !each.note);
  assert.deepEqual([problem.file, problem.line, problem.column], ["CalcForm/Ours.txt", 5, 18]);
  assert.match(problem.message, /no landmark "n"/);
  const session = engine.measure(sample("lateral-average.json"));
  session.choose(["Ours", "Steiner"].map((name) => named(name, "lateral", folder)));
  assert.ok(Math.abs(session.measure().value[0] - 82) < 0.01);
  folder.delete();
  assert.throws(() => session.choose(folder.analyses("lateral")), /no open folder/);
  const single = engine.openFolder([{ name: "Ours.txt", bytes: bytesOf(slip) }]);
  assert.deepEqual([single.analyses("lateral")[0].title, single.problems[0].file], ["Ours", "Ours.txt"]);
  for (const files of [[], [{ name: "a", bytes: bytesOf("nothing") }], [{ name: "../CalcForm/x", bytes: bytesOf("") }]])
    assert.throws(() => engine.openFolder(files), EngineError);
});

test("the average face is found by what is placed", () => {
  const record = sample("lateral-average.json");
  const session = engine.measure({ ...empty("lateral"), mm_per_pixel: 0.1 });
  const placed = ["S", "N", "Po"];
  const turned = ([x, y]) => ({ x: 300 + 0.8 * x - 0.3 * y, y: 200 + 0.3 * x + 0.8 * y });
  for (const name of placed) {
    assert.equal(session.suggest("Me"), null);
    const at = turned(record.landmarks[name]);
    session.place(name, at.x, at.y);
  }
  for (const name of ["Me", "A", "U1"]) assert.ok(near(session.suggest(name), turned(record.landmarks[name]), 1e-3));
  assert.equal(session.suggest("nothing"), null);
  // Each landmark of another face by all the rest: within a centimetre, and half of them within 3 mm.
  const other = sample("lateral-class2.json");
  session.setRecord(other);
  const misses = Object.entries(other.landmarks).map(([name, [x, y]]) => {
    session.remove(name);
    const at = session.suggest(name);
    session.place(name, x, y);
    return at ? Math.hypot(at.x - x, at.y - y) * other.mm_per_pixel : 0;
  });
  misses.sort((a, b) => a - b);
  assert.ok(misses.at(-1) < 10 && misses[misses.length >> 1] < 3, `${misses.slice(-5)}`);
});

test("points of formulas lie on both of their lines", () => {
  const session = measuring("lateral-class2.json");
  const { landmarks } = session.record();
  const points = new Map(engine.formulaPoints("lateral").map(({ name, expression }) => [name, session.construct(expression)]));
  const gnathion = session.construct("cross([N],[Pog],[Me],[Go(L)])");
  const off = (at, [x1, y1], [x2, y2]) => Math.abs((at.x - x1) * (y2 - y1) - (at.y - y1) * (x2 - x1)) / Math.hypot(x2 - x1, y2 - y1);
  assert.ok(off(points.get("CC"), landmarks.Ba, landmarks.N) < 1e-6 && off(points.get("CC"), landmarks.PT, [gnathion.x, gnathion.y]) < 1e-6);
  assert.ok(off(points.get("CF"), landmarks.Po, landmarks.Or) < 1e-6);
  const row = rowOf(session, "Anterior cranial base");
  const length = Math.hypot(points.get("CC").x - landmarks.N[0], points.get("CC").y - landmarks.N[1]) * session.record().mm_per_pixel;
  assert.ok(Math.abs(session.measure().value[row] - length) < 1e-6);
});

test("shapes lie where the items measure", () => {
  const session = measuring("lateral-class2.json");
  const { landmarks } = sample("lateral-class2.json");
  const kinds = new Set();
  for (const row of session.rows.keys())
    for (const { kind, points, segments, arc } of session.shapes(row)) {
      kinds.add(kind);
      assert.ok(segments.length > 0 && points.every((point) => Number.isFinite(point.x + point.y)));
      assert.equal(arc !== null, kind === "angle" || kind === "line_angle");
      if (kind !== "foot") continue;
      const [point, a, b, foot] = points;
      const [across, along] = [{ x: foot.x - point.x, y: foot.y - point.y }, { x: b.x - a.x, y: b.y - a.y }];
      assert.ok(Math.abs(across.x * along.x + across.y * along.y) < 1e-3 * Math.hypot(along.x, along.y));
    }
  assert.ok(["length", "angle", "line_angle", "foot"].every((kind) => kinds.has(kind)));
  const [sna] = session.shapes(rowOf(session, "SNA"));
  const [x, y] = landmarks.N;
  assert.deepEqual(sna.arc.at, { x, y });
});

test("tracings, superimpositions, charts and reports are drawn", () => {
  const session = measuring("lateral-class2.json");
  const options = { mode: shipped.modes("lateral").find((mode) => mode.name === "Steiner"), outlines: "fitted" };
  const tracing = session.tracing(options);
  assert.ok(tracing.outlines.length > 10 && tracing.lines.length > 3 && tracing.values.length > 3);
  for (const on of ["cranial-base", "palatal-plane", "mandibular-plane"])
    for (const [place, outline] of session.superimpose(session.record(), on, options).outlines.entries())
      for (const [at, point] of outline.points.entries())
        assert.ok(near(point, tracing.outlines[place].points[at]), `${on} ${outline.name}`);
  const { S, ...without } = session.record().landmarks;
  assert.throws(() => session.superimpose({ ...session.record(), landmarks: without }, "cranial-base", options), /lacks S/);
  const films = [{ record: session.record() }, { record: sample("lateral-average.json") }];
  const pages = engine.report(films, [named("Steiner")], "ja");
  for (const { svg, widthMm, heightMm } of pages) {
    assert.deepEqual([widthMm, heightMm], [210, 297]);
    assert.match(svg, /^<svg[^]*<\/svg>\n$/);
  }
  assert.ok(pages.length >= 2 && pages.some((page) => page.svg.includes("計測")));
  const [alone] = engine.report(films.slice(0, 1), [named("Steiner")], "en");
  assert.ok(alone.svg.includes(">Born<") && !alone.svg.includes(">File<"), "a case of the page has no file");
  assert.ok(engine.chart(films, [named("Steiner")], "en").svg.includes("SNA"));
  const film = { bytes: sampleBytes("photo.jpg"), width: 2000, height: 2400 };
  assert.match(session.tracingSvg({ ...options, film }).svg, /data:image\/jpeg;base64/);
});

test("dates, ages and growth are told in both languages", () => {
  assert.equal(engine.readDate("H24.3.31"), "2012-03-31");
  assert.match(engine.showDate("2024-03-05", "ja"), /令和6年3月5日/);
  assert.equal(engine.age("2012-02-29", "2024-02-28", "en"), "11 y 11 m");
  const growth = measuring("lateral-class2.json").growth("ja");
  assert.ok(growth.some((finding) => finding.years > 5) && growth.every((finding) => finding.what));
});
