// A person's whole way, from a film to a report: by mouse, by keyboard alone, by touch, in Japanese; and what goes wrong on it.
import { execFileSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join, resolve } from "node:path";
import type { Page } from "playwright-core";
import { afterAll, afterEach, beforeAll, beforeEach, describe, expect, test } from "vitest";
import { archiveFile } from "../../page/store/archive.ts";
import { drawFilm, type DrawnFilm, type Point } from "../drawn/film.ts";
import { dicomOf, pngOf } from "../drawn/files.ts";
import { Browser, built } from "./harness.ts";
import { Person, type SavedCase } from "./person.ts";

const project = resolve(import.meta.dirname, "../../..");
const cephtool = join(process.env.NATIVE_BUILD ?? join(project, "build/release"), "bin/cephtool");
const axe = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");
const folder = mkdtempSync(join(tmpdir(), "person-"));
const file = (name: string): string => join(folder, name);
const film: DrawnFilm = drawFilm();
let site = "";
let browser: Browser;

beforeAll(async () => {
  writeFileSync(file("film.png"), pngOf(film));
  writeFileSync(file("film.dcm"), dicomOf(film));
  site = await built();
});

afterAll(() => rmSync(folder, { recursive: true }));

beforeEach(async () => {
  browser = await Browser.open(site, { acceptDownloads: true });
});

afterEach(async () => {
  const faults = browser.faults.splice(0);
  await browser.close();
  expect(faults).toEqual([]);
});

async function person(language: "en" | "ja" = "en"): Promise<Person> {
  const one = new Person(await browser.page(), film, language);
  if (language === "ja") await one.page.getByRole("button", { name: "日本語" }).click();
  await one.ready();
  return one;
}

/** What axe-core finds, as the elements it finds it on. */
async function barriers(page: Page): Promise<string[]> {
  await page.evaluate(axe);
  return page.evaluate(async () => {
    const { axe } = globalThis as unknown as { axe: { run(): Promise<{ violations: { id: string; nodes: { html: string }[] }[] }> } };
    return (await axe.run()).violations.flatMap(({ id, nodes }) => nodes.map(({ html }) => `${id}: ${html.slice(0, 120)}`));
  });
}

interface Results {
  readonly cases: readonly { readonly analyses: readonly { readonly title: string }[] }[];
}

/** The page's numbers of all its analyses that the program gives for the case, too: equal to the last digit. */
async function sameAsProgram(one: Person, saved: string): Promise<void> {
  const ours = JSON.parse(await one.saved("JSON .json")) as Results;
  const output = execFileSync(cephtool, ["analyze", saved, "--format", "json", "--language", one.language], { maxBuffer: 1 << 26, stdio: ["ignore", "pipe", "ignore"] });
  const theirs = JSON.parse(output.toString()) as Results;
  const title = new Map(ours.cases[0]?.analyses.map((analysis) => [analysis.title, analysis]));
  const common = theirs.cases[0]?.analyses.filter((analysis) => title.has(analysis.title)) ?? [];
  expect(common.length).toBeGreaterThan(0);
  for (const analysis of common) expect(title.get(analysis.title)).toEqual(analysis);
}

function farthest(saved: SavedCase, names: readonly string[]): number {
  const landmarks = { ...saved.landmarks, ...saved.user, ...saved.vertebrae };
  return Math.max(...names.map((name) => Math.hypot((landmarks[name]?.[0] ?? Infinity) - (film.landmarks[name]?.[0] ?? 0), (landmarks[name]?.[1] ?? 0) - (film.landmarks[name]?.[1] ?? 0))));
}

describe("from a film to a report", () => {
  test("by mouse: calibrate, place all landmarks, read, save, reload, undo all and redo", async () => {
    const one = await person();
    await one.open(file("film.png"));
    await one.calibrateOnRuler();
    await one.chooseAllAnalyses();
    const placed = await one.placeAll();
    expect(placed.length).toBeGreaterThanOrEqual(40);
    const saved = await one.case();
    expect(saved.mm_per_pixel).toBeCloseTo(film.mmPerPixel, 3);
    expect(farthest(saved, placed)).toBeLessThan(4); // a pixel of the screen, at 28 %

    const values = await one.values();
    expect([...values.values()].filter((value) => value !== "").length).toBeGreaterThan(100);
    writeFileSync(file("saved.json"), JSON.stringify(saved));
    await sameAsProgram(one, file("saved.json"));

    // Taken back to the film without a landmark, and put again.
    const undo = one.button(one.words.undo);
    for (let i = 0; i < 200 && (await undo.isEnabled()); ++i) await undo.click();
    expect(Object.keys((await one.case()).landmarks)).toEqual([]);
    const redo = one.button(one.words.redo);
    for (let i = 0; i < 200 && (await redo.isEnabled()); ++i) await redo.click();
    expect(await one.case()).toEqual(saved);
    await one.kept();
    await one.page.reload();
    await one.page.getByRole("toolbar", { name: one.words.filmTools }).waitFor();
    expect(await one.values()).toEqual(values);
    const [x, y] = await one.onScreen(film.landmarks["S"] ?? [0, 0]);
    await one.page.mouse.move(x, y);
    await one.page.mouse.down();
    await one.page.mouse.move(x + 40, y + 25, { steps: 5 });
    await one.page.mouse.up();
    const moved = await one.values();
    expect(moved).not.toEqual(values);
    await one.page.keyboard.press("Control+z");
    expect(await one.values()).toEqual(values);
    await one.page.keyboard.press("Control+y");
    expect(await one.values()).toEqual(moved);
    expect(await barriers(one.page)).toEqual([]);
  });

  test.each(["lateral-average.json", "lateral-class2.json", "frontal-average.json", "model-average.json", "lateral-average.csv", "lateral-average.fcsv"])(
    "the case %s is opened, measured as the program measures it, and survives a turn of the film",
    async (name) => {
      const one = await person();
      await one.open(join(project, "examples/samples", name));
      await one.chooseAllAnalyses("results");
      await sameAsProgram(one, join(project, "examples/samples", name));
      const before = await one.values();
      expect([...before.values()].filter((value) => value !== "").length).toBeGreaterThan(3);
      await one.page.locator("summary", { hasText: "" }).and(one.page.getByLabel(one.words.turn)).click();
      for (let quarter = 0; quarter < 4; ++quarter) await one.button(one.words.turns.clockwise).click();
      await one.page.keyboard.press("Escape");
      expect(await one.values()).toEqual(before);
    },
  );

  test("landmarks of particular analyses are asked for, defined and suggested like any other, and measured as the program does", async () => {
    const one = await person();
    const { user: _own, ...face } = JSON.parse(readFileSync(join(project, "examples/samples/lateral-average.json"), "utf8")) as SavedCase;
    writeFileSync(file("bare.json"), JSON.stringify(face));
    await one.open(file("bare.json"));
    await one.chooseAllAnalyses();
    await one.panel("landmarks");
    const goOn = one.button(one.words.continuePlacing);
    if (await goOn.count()) await goOn.click();
    const undefinedOnes: string[] = [];
    let count = 0;
    for (let name = await one.asked(); name !== null; name = await one.asked(), ++count) {
      if (!(await one.page.locator(".guide-name span").textContent())) undefinedOnes.push(name);
      const take = one.page.getByRole("button", { name: one.words.takeSuggestion });
      await ((await take.count()) ? take : one.button(one.words.skip)).click();
      await expect.poll(() => one.asked()).not.toBe(name);
    }
    expect(undefinedOnes).toEqual([]);
    expect(count).toBeGreaterThan(40);
    const saved = await one.case();
    expect(Object.keys(saved.user ?? {}).length).toBeGreaterThan(30);
    writeFileSync(file("own.json"), JSON.stringify(saved));
    await sameAsProgram(one, file("own.json"));
  });

  test("norms of a population, Japanese names, and a sheet of one's own that the program takes", async () => {
    const one = await person("ja");
    await one.open(join(project, "examples/samples/lateral-class2.json"));
    const names = [...(await one.values()).keys()].map((name) => name.replace(/^\d+ /, ""));
    expect(names.length).toBeGreaterThan(20);
    expect(names.filter((name) => /[a-z]{4}/.test(name) && !/[\u3040-\u30ff\u4e00-\u9fff]/.test(name))).toEqual([]);
    await one.panel("patient");
    await one.page.getByLabel(one.words.population).selectOption("Japanese");
    await one.panel("results");
    const downs = one.page.locator(".analysis", { hasText: "Downs" }).first();
    await expect.poll(() => downs.textContent()).toContain("日本人");
    const saved = await one.case();
    expect(saved.population).toBe("Japanese");
    writeFileSync(file("japanese.json"), JSON.stringify(saved));
    await sameAsProgram(one, file("japanese.json"));
    await one.page.locator("summary", { hasText: one.words.ownSheet }).click();
    for (const place of [0, 2]) await downs.getByRole("checkbox").nth(place).check();
    const shown = await downs.locator(".rows .row:not(.heading) .value").allTextContents();
    expect(await barriers(one.page)).toEqual([]);
    await one.page.getByLabel(one.words.sheetTitle).fill("外来");
    const download = one.page.waitForEvent("download");
    await one.button(one.words.saveSheet(2)).click();
    await (await download).saveAs(file("外来.txt"));
    execFileSync(cephtool, ["check", file("外来.txt")]);
    const output = execFileSync(cephtool, ["analyze", file("japanese.json"), "--analysis", file("外来.txt"), "--format", "json"], { stdio: ["ignore", "pipe", "ignore"] });
    const own = JSON.parse(output.toString()) as { cases: { analyses: { items: { value: number }[] }[] }[] };
    expect(own.cases[0]?.analyses[0]?.items.map(({ value }) => value.toFixed(2))).toEqual([shown[0], shown[2]]);
  });

  test("by keyboard alone, to a tenth of a millimetre, with suggestions after three points", async () => {
    const one = await person();
    const { keyboard } = one.page;
    const focused = (): Promise<string> => one.page.evaluate(() => `${document.activeElement?.id} ${document.activeElement?.getAttribute("aria-label") ?? ""}`);
    const tabTo = async (what: string): Promise<void> => {
      for (let i = 0; i < 40 && !(await focused()).includes(what); ++i) await keyboard.press("Tab");
      expect(await focused()).toContain(what);
    };
    const chooser = one.page.waitForEvent("filechooser");
    await tabTo(one.words.openLabel);
    await keyboard.press("Enter");
    await (await chooser).setFiles(file("film.dcm"));
    await one.page.getByRole("toolbar", { name: one.words.filmTools }).waitFor();
    await tabTo(one.words.filmLabel);
    const announced = one.page.locator("p[aria-live]").last();
    /** Goes to a place by centimetres, millimetres and tenths, from where `Enter` says that the point is. */
    const put = async ([x, y]: Point): Promise<void> => {
      const name = await one.asked();
      await keyboard.press("Enter"); // takes what is suggested, or shows the cursor
      if ((await one.asked()) === name) await keyboard.press("Enter");
      await expect.poll(async () => (await announced.textContent()) ?? "").toMatch(new RegExp(`^${name?.replace(/[()]/g, "\\$&")} `));
      const [fromX = 0, fromY = 0] = ((await announced.textContent()) ?? "").match(/-?[\d.]+(?=,|$)/g)?.map(Number) ?? [];
      await keyboard.press("PageUp");
      for (const [distance, keys] of [[x - fromX, ["ArrowLeft", "ArrowRight"]], [y - fromY, ["ArrowUp", "ArrowDown"]]] as const) {
        const tenths = Math.round(Math.abs(distance)); // 0.1 mm a pixel
        const key = keys[distance < 0 ? 0 : 1];
        for (let i = 0; i < Math.floor(tenths / 100); ++i) await keyboard.press(`Control+${key}`);
        for (let i = 0; i < Math.floor((tenths % 100) / 10); ++i) await keyboard.press(`Shift+${key}`);
        for (let i = 0; i < tenths % 10; ++i) await keyboard.press(key);
      }
      await keyboard.press("PageDown");
    };
    const placed = await one.placeAll(put, 6);
    const saved = await one.case();
    expect(saved.mm_per_pixel).toBeCloseTo(0.1, 9); // out of the header
    expect(farthest(saved, placed)).toBeLessThanOrEqual(1);
  });

  test("by touch, where a finger points 64 pixels above itself", async () => {
    await browser.close();
    browser = await Browser.open(site, { acceptDownloads: true, hasTouch: true, viewport: { width: 820, height: 1180 } });
    const one = await person();
    await one.open(file("film.dcm"));
    const placed = await one.placeAll(async (place) => {
      const [x, y] = await one.onScreen(place);
      await one.page.touchscreen.tap(x, y + 64);
    }, 10);
    expect(farthest(await one.case(), placed)).toBeLessThan(6);
  });

  test.each(["paste", "drop"] as const)("a film that comes by %s, and a pen that points where it touches", async (way) => {
    const one = await person();
    await one.give(way, file("film.dcm"));
    const pen = await one.page.context().newCDPSession(one.page);
    const placed = await one.placeAll(async (place) => {
      const [x, y] = await one.onScreen(place);
      for (const type of ["mouseMoved", "mousePressed", "mouseReleased"] as const)
        await pen.send("Input.dispatchMouseEvent", { type, x, y, button: type === "mouseMoved" ? "none" : "left", clickCount: 1, pointerType: "pen" });
    }, 5);
    expect(farthest(await one.case(), placed)).toBeLessThan(4);
  });

  test("points that formulas construct are on the film once what they rest on is placed, and not in the case", async () => {
    const one = await person();
    writeFileSync(file("case.json"), JSON.stringify({ format: "cephtool-case", version: 1, kind: "lateral", mm_per_pixel: 0.1, landmarks: Object.fromEntries(["Po", "Or", "PTV"].map((name) => [name, film.landmarks[name]])) }));
    await one.open(file("film.dcm"), file("case.json"));
    const [po, or, ptv] = ["Po", "Or", "PTV"].map((name) => film.landmarks[name] ?? [NaN, NaN]) as [Point, Point, Point];
    const along = ((ptv[0] - po[0]) * (or[0] - po[0]) + (ptv[1] - po[1]) * (or[1] - po[1])) / ((or[0] - po[0]) ** 2 + (or[1] - po[1]) ** 2);
    const centre: Point = [po[0] + along * (or[0] - po[0]), po[1] + along * (or[1] - po[1])];
    await expect.poll(() => one.violetAt(centre)).toBeGreaterThan(4);
    await one.panel("landmarks");
    await one.page.locator(".landmark", { hasText: /^PTV$/ }).click();
    await one.page.keyboard.press("Delete");
    await expect.poll(() => one.violetAt(centre)).toBe(0);
    await one.button(one.words.undo).click();
    expect(Object.keys((await one.case()).landmarks)).not.toContain("CF");
  });

  test("in Japanese, with nothing left in English and no barrier in any panel, light or dark", async () => {
    const one = await person("ja");
    await one.open(file("film.dcm"));
    await one.placeAll(undefined, 5);
    for (const theme of ["light", "dark"] as const) {
      await one.page.emulateMedia({ colorScheme: theme });
      for (const panel of ["patient", "scale", "landmarks", "results", "compare"] as const) {
        await one.panel(panel);
        expect(await barriers(one.page), `${theme} ${panel}`).toEqual([]);
      }
    }
    for (const [panel, japanese] of [["scale", /較正|倍率|画素/], ["landmarks", /目視|作図/]] as const) {
      await one.panel(panel);
      const said = await one.page.locator("body").innerText();
      expect(said).toMatch(japanese);
      expect(said).not.toMatch(/\b(the|of|from)\b/i);
    }
    const saved = await one.case();
    expect(saved).toMatchObject({ name: "見本 花子", sex: "female", birth: "2001-05-14", film: "2025-06-02" });
  });

  test("printed on A4 and Letter, millimetres are millimetres", async () => {
    const one = await person();
    await one.open(file("film.dcm"));
    await one.placeAll();
    const svg = await one.saved(`${one.words.onPaper} .svg`);
    const perMm = 1 / film.mmPerPixel; // the drawing counts in pixels of the film
    const inSvg = new Map([...svg.matchAll(/<text x="([-\d.]+)" y="([-\d.]+)"[^>]*>(\S+)<\/text>/g)].map(([, x, y, name]) => [name, [Number(x) / perMm, Number(y) / perMm]] as const));
    for (const format of ["A4", "Letter"] as const) {
      writeFileSync(file("report.pdf"), await one.page.pdf({ format }));
      const text = execFileSync("pdftotext", ["-layout", file("report.pdf"), "-"]).toString();
      expect(text).toContain(one.words.report);
      expect(text).toContain("見本 花子");
      expect(text).toContain(one.words.scaleOfPrint(100));
      const pages = Number(/Pages:\s+(\d+)/.exec(execFileSync("pdfinfo", [file("report.pdf")]).toString())?.[1]);
      const last = execFileSync("pdftotext", ["-bbox", "-f", String(pages), file("report.pdf"), "-"]).toString();
      const words = [...last.matchAll(/xMin="([\d.]+)" yMin="[\d.]+" xMax="[\d.]+" yMax="([\d.]+)">([^<]+)</g)];
      const inPdf = new Map(words.map(([, x, y, name]) => [name, [(Number(x) * 25.4) / 72, (Number(y) * 25.4) / 72]] as const));
      for (const [one_, other, axis] of [["S", "N", 0], ["Po", "N", 0], ["N", "Me", 1], ["S", "Me", 1]] as const) {
        const apart = (places: ReadonlyMap<string | undefined, readonly number[]>): number => (places.get(other)?.[axis] ?? NaN) - (places.get(one_)?.[axis] ?? NaN);
        expect(Math.abs(apart(inPdf) - apart(inSvg)), `${one_} ${other} ${format}`).toBeLessThan(0.1);
        expect(apart(inSvg)).toBeGreaterThan(50);
      }
    }
  });
});

describe("more than one case", () => {
  test("of a file with several all are in the list; one laid under another gives the changes, on paper, too", async () => {
    const one = await person();
    const [first, second] = ["lateral-average", "lateral-class2"].map((name) => join(project, `examples/samples/${name}.json`));
    const specimens = [first!, second!].map((name) => execFileSync(cephtool, ["convert", name, "--format", "tps"]).toString());
    writeFileSync(file("two.tps"), specimens.join(""));
    await one.open(file("two.tps"));
    await one.page.getByText(one.words.othersKept(2)).waitFor();
    await one.kept();
    await one.button(one.words.patients).click();
    await expect.poll(() => one.page.locator(".patient-row b").allTextContents()).toEqual([first, second].map((name) => (JSON.parse(readFileSync(name!, "utf8")) as { name: string }).name));
    await one.page.keyboard.press("Escape");
    await one.open(second!);
    const now = await one.values();
    await one.panel("compare");
    await one.page.getByLabel(one.words.openEarlier).setInputFiles(first!);
    const cells = one.page.locator(".changes tr", { hasText: "SNB" }).first().locator("td");
    await expect.poll(() => cells.allTextContents()).toEqual(["80.0", [...now].find(([name]) => name.endsWith(" SNB"))?.[1], "-4.8", "°"]);
    expect(await barriers(one.page)).toEqual([]);
    const drawings = new Set<string>();
    for (const plane of Object.values(one.words.registrations)) {
      await one.page.getByRole("radio", { name: plane }).check();
      await one.page.evaluate(() => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))));
      drawings.add(await one.page.locator(".layer-marks").evaluate((sheet: HTMLCanvasElement) => sheet.toDataURL()));
    }
    expect(drawings.size).toBe(3);
    writeFileSync(file("changes.pdf"), await one.page.pdf({ format: "A4" }));
    expect(execFileSync("pdftotext", ["-layout", file("changes.pdf"), "-"]).toString()).toMatch(/SNB +80\.0 +75\.1 +-4\.8[^]*Laid on Mandibular plane Me-Go at Me\. Dashed: .*True size/);
  });
});

describe("what goes wrong", () => {
  test("values have their errors, slips are named, and whoever wants neither switches errors off for good", async () => {
    const one = await person();
    const face = JSON.parse(readFileSync(join(project, "examples/samples/lateral-class2.json"), "utf8")) as SavedCase;
    const [x, y] = face.landmarks["Go"]!;
    writeFileSync(file("slip.json"), JSON.stringify({ ...face, landmarks: { ...face.landmarks, Go: [x + 250, y] } }));
    await one.open(file("slip.json"));
    const snb = one.page.locator(".row", { has: one.page.getByRole("button", { name: "SNB", exact: true }) }).first();
    await snb.scrollIntoViewIfNeeded();
    await expect.poll(() => snb.innerText()).toMatch(/75\.1\s*± 0\.9/);
    await snb.hover();
    await expect.poll(() => one.page.locator(".measured-caption").innerText()).toContain("mostly B (48 %)");
    expect(await one.page.locator(".remark.warning").allInnerTexts()).toContainEqual(expect.stringContaining("Go lies 25 mm from where"));
    expect(await barriers(one.page)).toEqual([]);
    await one.button(one.words.showLandmark("Go")).click();
    expect(await one.asked()).toBe("Go");
    await one.page.keyboard.press("Escape");
    await one.page.getByLabel(one.words.errorsOfValues).uncheck();
    await expect.poll(() => snb.innerText()).not.toContain("±");
    await one.kept();
    await one.page.reload();
    await one.panel("results");
    expect(await one.page.getByLabel(one.words.errorsOfValues).isChecked()).toBe(false);
  });

  test("a film is read again without sight of the first reading; three such films are the study that the program makes of their files", async () => {
    const one = await person();
    const { words } = one;
    const firsts = ["S", "N", "Or", "A", "U1"];
    for (let round = 0; round < 3; ++round) {
      await one.open(file("film.dcm"));
      await expect.poll(() => one.progress()).toMatch(/^0 /);
      expect(await one.placeAll(undefined, firsts.length)).toEqual(firsts);
      await one.panel("compare");
      await one.button(words.readAgain).press("Enter");
      await expect.poll(() => one.progress()).toMatch(/^0 /);
      expect(Object.keys((await one.case()).landmarks)).toEqual([]);
      expect([...(await one.values()).values()].join("")).toBe("");
      if (round === 0) {
        await one.panel("landmarks");
        await one.placeAll(undefined, 1);
        for (const name of [words.giveReadingUp, words.reallyGiveUp]) await one.button(name).click();
        await expect.poll(async () => Object.keys((await one.case()).landmarks)).toEqual(firsts);
        await one.panel("compare");
        await one.button(words.readAgain).click();
        await one.kept();
        await one.page.reload();
        await one.page.getByText(words.blindNow).waitFor();
      }
      await one.panel("landmarks");
      expect(await barriers(one.page)).toEqual([]);
      await one.placeAll(([x, y]) => one.click(x === film.landmarks["A"]?.[0] ? [x + 40 * round + 40, y] : [x, y]), firsts.length);
      await one.button(words.finishReading).click();
      const farthest = one.page.locator(".reading-landmarks tbody tr").first();
      await expect.poll(() => farthest.locator("th").innerText()).toBe("A");
      expect(Number(await farthest.locator("td").last().innerText())).toBeCloseTo((40 * round + 40) * film.mmPerPixel, 0);
      await one.kept();
    }
    expect(await barriers(one.page)).toEqual([]);
    await one.button(words.openFirstReading).click();
    await one.button(words.openSecondReading).waitFor();
    await one.button(words.patients).click();
    await one.button(words.studyTitle).click();
    await one.page.locator(".study").waitFor();
    expect(await barriers(one.page)).toEqual([]);
    const saved = async (choice: string): Promise<string> => {
      const download = one.page.waitForEvent("download");
      await one.button(choice).click();
      return (await download).path();
    };
    // The program takes the files by their names, so that sums differ in their last digits.
    const rounded = (csv: string): string[] => csv.split("\r\n").map((row) => row.replace(/-?\d+\.\d+(e-\d+)?/g, (digits) => Number(digits).toFixed(6).replace(/^-(?=[0.]*$)/, "")));
    const ours = rounded(readFileSync(await saved(words.saveStudy), "utf8"));
    execFileSync("python3", ["-m", "zipfile", "-e", await saved(words.saveAllReadings), file("study")]);
    const readings = ["reading-1", "reading-2"].map((name) => join(file("study"), name)) as [string, string];
    const theirs = execFileSync(cephtool, ["reliability", readings[0], "--second", readings[1], "--format", "csv"], { encoding: "utf8", stdio: ["ignore", "pipe", "ignore"] });
    expect(ours.filter((row) => /,SNA,|,A along,/.test(row)).length).toBe(2);
    expect(rounded(theirs)).toEqual(expect.arrayContaining(ours));
  });

  test("a damaged file of each kind is told with its name, and what is open stays", async () => {
    const one = await person();
    await one.open(file("film.dcm"));
    const placed = await one.placeAll(undefined, 3);
    const data = (name: string): Buffer => readFileSync(join(project, "tests/film/data", name));
    const cut = { "cut.png": data("grey16.png"), "cut.jpg": data("grey.jpg"), "cut.tif": data("grey16_lzw.tif"), "cut.dcm": data("grey16_j2k.dcm"), "cut.json": readFileSync(join(project, "examples/samples/lateral-average.json")) };
    for (const [name, bytes] of Object.entries(cut)) {
      writeFileSync(file(name), bytes.subarray(0, bytes.length * 0.6));
      await one.page.setInputFiles("#file-picker", file(name));
      const alert = one.page.getByRole("alert").filter({ hasText: name });
      await alert.waitFor();
      expect(await alert.textContent()).not.toMatch(/undefined|\[object|TypeError/);
      await one.button(one.words.close, alert).click();
    }
    expect(Object.keys((await one.case()).landmarks)).toEqual(expect.arrayContaining(placed));
    // Of several the others are opened.
    await one.page.setInputFiles("#file-picker", [file("cut.json"), join(project, "examples/samples/lateral-class2.json"), file("cut.png"), file("film.png")]);
    const alert = one.page.getByRole("alert").filter({ hasText: "cut.json" }).filter({ hasText: "cut.png" });
    await alert.waitFor();
    await one.button(one.words.close, alert).click();
    const { image, landmarks } = (await one.case()) as SavedCase & { image?: string };
    expect([image, Object.keys(landmarks).length]).toEqual(["film.png", 51]);
    await one.page.setInputFiles("#file-picker", join(project, "examples/samples/cases-flat.csv"));
    await one.page.getByRole("alert").filter({ hasText: "cephtool batch cases-flat.csv" }).waitFor();
  });

  test("a tab that dies in the middle, and the browser with it, loses nothing", async () => {
    const one = await person();
    await one.open(file("film.dcm"));
    await one.placeAll(undefined, 7);
    await one.kept();
    const before = await one.case();
    await browser.crash(one.page);
    const again = new Person(await browser.page(), film);
    await again.page.getByRole("toolbar", { name: again.words.filmTools }).waitFor();
    expect(await again.case()).toEqual(before);
    expect(await again.progress()).toMatch(/^7 /);
  });

  test("what was served once works without the server", async () => {
    await browser.close();
    browser = await Browser.open(site, { acceptDownloads: true, serviceWorkers: "allow" });
    const one = await person();
    await one.page.evaluate(async () => (await navigator.serviceWorker.ready).active?.state);
    await one.page.context().setOffline(true);
    await one.page.reload();
    await one.ready();
    await one.open(file("film.dcm"));
    expect((await one.placeAll(undefined, 3)).length).toBe(3);
  });

  test("a full disk is told; work goes on and all of it, the film too, is kept once there is room", async () => {
    const one = await person();
    const disk = await one.page.context().newCDPSession(one.page);
    const { origin } = new URL(browser.address);
    await disk.send("Storage.overrideQuotaForOrigin", { origin, quotaSize: 100 });
    await one.open(file("film.dcm"));
    await one.page.getByText(one.words.saveFailures.full).waitFor();
    await one.placeAll(undefined, 2);
    await disk.send("Storage.overrideQuotaForOrigin", { origin });
    await one.placeAll(undefined, 1);
    await one.kept();
    await one.page.reload();
    await one.button(one.words.calibrate).waitFor(); // there is a film
    await expect.poll(() => one.progress()).toMatch(/^3 /);
  });

  test("300 patients are listed, found and opened at once, and come in and go out as one file", async () => {
    const one = await person();
    const landmarks = Object.fromEntries(Object.entries(film.landmarks).slice(0, 20));
    const document = {
      work: { case: { format: "cephtool-case", version: 1, kind: "lateral", landmarks }, scale: null, orientation: { mirrored: false, quarters: 0 }, skipped: [], analyses: [] },
      view: { current: null, tone: { brightness: 0, contrast: 1, inverted: false, clahe: false, window: null }, tracing: true, outlines: true, labels: true, modes: [] },
    };
    const numbers = Array.from({ length: 300 }, (_, i) => String(i).padStart(3, "0"));
    const patients = numbers.map((number) => ({ id: `p${number}`, name: `Patient ${number}`, number, sex: "" as const, birthDate: "" }));
    const cases = numbers.map((number) => ({
      entry: { id: `c${number}`, patient: `p${number}`, kind: "lateral" as const, filmDate: "2024-01-01", film: null, landmarkCount: 20, changedAt: 1 },
      document,
      revision: 1,
    }));
    writeFileSync(file("all.digitiser"), new Uint8Array(await archiveFile({ patients, cases, films: [] }).arrayBuffer()));
    await one.button(one.words.patients).click();
    await one.page.getByLabel(one.words.importAll).setInputFiles(file("all.digitiser"));
    const count = one.page.getByRole("dialog").getByRole("status");
    await expect.poll(() => count.textContent(), { timeout: 20_000 }).toBe(one.words.patientCount(300));
    await one.button(one.words.close, one.page.getByRole("dialog")).click();
    const before = Date.now();
    await one.button(one.words.patients).click();
    await one.page.getByText("Patient 299").waitFor();
    console.log(`300 patients shown in ${Date.now() - before} ms`);
    expect(await barriers(one.page)).toEqual([]);
    await one.page.getByLabel(one.words.search).fill("Patient 123");
    await expect.poll(() => count.textContent()).toBe(one.words.patientCount(1));
    const download = one.page.waitForEvent("download");
    await one.button(one.words.exportAll).click();
    expect(readFileSync(await (await download).path(), "utf8").split("\n")[0]).toContain("Patient 299");
    await one.page.locator(".film-entry").click();
    await one.panel("landmarks");
    await one.page.locator(".landmark.placed").first().waitFor();

    // Who is on the desk is gone for good when the film and the patient are deleted.
    await one.button(one.words.patients).click();
    await one.page.getByLabel(one.words.search).fill("123");
    await one.button(one.words.delete, one.page.getByRole("dialog")).click();
    await one.button(one.words.reallyDelete).click();
    await one.button(one.words.deletePatient).click();
    await one.button(one.words.reallyDelete).click();
    await expect.poll(() => count.textContent()).toBe(one.words.patientCount(0));
    await one.page.reload();
    await one.button(one.words.patients).click();
    await expect.poll(() => count.textContent()).toBe(one.words.patientCount(299));
  });
});

const moves = 60;

/**
 * From an event of the mouse, which goes round a place, up to behind the frame that shows it: half and 95 % take less. Each
 * move waits until the page has taken the one before, so that no queue is measured: there are as many frames as moves.
 */
async function latency(page: Page, [x, y]: Point): Promise<{ median: number; late: number; frames: number }> {
  await page.evaluate(() => {
    const delays: number[] = [];
    const frames = new Set<number>();
    Object.assign(globalThis, { delays, frames });
    addEventListener("pointermove", () => {
      const began = performance.now();
      requestAnimationFrame((time) => {
        frames.add(time);
        const { port1, port2 } = new MessageChannel();
        port2.onmessage = () => delays.push(performance.now() - began); // behind this frame
        port1.postMessage(null);
      });
    }, { capture: true });
  });
  for (let i = 0; i < moves; ++i) await page.mouse.move(x + 30 * Math.sin(i / 5), y + 30 * Math.cos(i / 5));
  const { delays, frames } = await page.evaluate(() => {
    const found = globalThis as unknown as { delays: number[]; frames: Set<number> };
    return { delays: found.delays.sort((a, b) => a - b), frames: found.frames.size };
  });
  const [median = Infinity, late = Infinity] = [0.5, 0.95].map((part) => delays[Math.floor(part * delays.length)]);
  return { median, late, frames };
}

describe("speed", () => {
  test("from disk the page is seen and ready at once, and a dragged landmark follows with all analyses shown", async () => {
    const page = await browser.page(`file://${site}/index.html`);
    const one = new Person(page, film);
    await one.ready();
    await expect.poll(() => page.getByText(one.words.gettingReady).count()).toBe(0);
    const [seen, ready] = await page.evaluate(() => [performance.getEntriesByName("first-contentful-paint")[0]?.startTime ?? Infinity, performance.now()]);
    await one.open(file("film.dcm"));
    await one.chooseAllAnalyses();
    await one.placeAll();
    await one.panel("results");
    const [x, y] = await one.onScreen(film.landmarks["A"] ?? [0, 0]);
    await page.mouse.move(x, y);
    await page.mouse.down();
    const processor = await page.context().newCDPSession(page);
    await processor.send("Performance.enable", { timeDomain: "threadTicks" });
    const used = async (): Promise<number[]> => {
      const { metrics } = await processor.send("Performance.getMetrics");
      return ["ScriptDuration", "TaskDuration"].map((name) => 1000 * (metrics.find((metric) => metric.name === name)?.value ?? NaN));
    };
    const before = await used();
    const { median, late, frames } = await latency(page, [x, y]);
    const [script, task] = (await used()).map((after, i) => (after - before[i]!) / moves);
    await page.mouse.up();
    await page.close();
    // What no page can go below here; it waits for the next frame before the event comes, as all pages do.
    const empty = await latency(await browser.page("about:blank"), [x, y]);
    console.log(
      `seen after ${seen?.toFixed(0)} ms, ready after ${ready?.toFixed(0)} ms; from event to frame, dragging, ${moves} moves in ${frames} frames: median ${median.toFixed(1)} ms, p95 ${late.toFixed(1)} ms, ` +
        `on an empty page ${empty.median.toFixed(1)} and ${empty.late.toFixed(1)} ms; processor's time a move: ${script?.toFixed(1)} ms of scripts, ${task?.toFixed(1)} ms of the page's thread`,
    );
    // Goals are 1 s, 2 s and 16 ms on a quiet machine; this one may be compiling something.
    expect(seen).toBeLessThan(4000);
    expect(ready).toBeLessThan(8000);
    expect(median).toBeLessThan(64);
  });
});
