// The page's films against those of `cephtool film` and of film/'s own reader: the same files give the same samples, the
// same greys on the screen, the same scale with the same words for where it comes from, the same patient. Needs the
// programs that make films (tests/film/make-films) and a native build; scripts/test-web has both.
import { execFileSync, spawnSync } from "node:child_process";
import { copyFileSync, existsSync, mkdtempSync, readdirSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join, resolve } from "node:path";
import { afterAll, beforeAll, describe, expect, test } from "vitest";
import { decodeFilm } from "../../page/film/decode.ts";
import type { Film } from "../../page/film/film.ts";
import { scaleOfHeader } from "../../page/film/scale.ts";
import { FilmError, wordsOf } from "../../page/film/sentence.ts";
import { shades } from "../../page/film/window.ts";

const project = resolve(import.meta.dirname, "../../..");
const build = process.env.NATIVE_BUILD ?? join(project, "build/release");
// Left out where there is no native build, unless one is named, as scripts/test-web does.
const leftOut = process.env.NATIVE_BUILD === undefined && !existsSync(join(build, "bin/cephtool"));
const samplesProgram = join(build, "tests/film/film_samples");
const cephtool = join(build, "bin/cephtool");

// What cannot be read here: no radiograph comes so. Each is refused with a sentence.
const refused = /^bilevel.*(g3|g4|fill_order)|^bilevel\.tif|_lzma|^grey12_extended/;

let folder = "";
let films: string[] = [];

/** Headers that say how wide a pixel is, also against themselves: elements to insert, and those to erase. */
const headers: Readonly<Record<string, readonly string[]>> = {
  nothing: [],
  imager: ["0018,1164=0.1\\0.1"],
  factor: ["0018,1164=0.1\\0.1", "0018,1114=1.1"],
  odd_factor: ["0018,1164=0.1\\0.1", "0018,1114=1.7"],
  smaller: ["0018,1164=0.1\\0.1", "0018,1114=0.9"],
  distances: ["0018,1164=0.11\\0.11", "0018,1110=1650", "0018,1111=1500"],
  two_factors: ["0018,1164=0.1\\0.1", "0018,1114=1.2", "0018,1110=1650", "0018,1111=1500"],
  pixel: ["0028,0030=0.1234567\\0.1234567"],
  pixel_and_factor: ["0028,0030=0.1\\0.1", "0018,1114=1.1"],
  same_pixel: ["0028,0030=0.1\\0.1", "0018,1164=0.1\\0.1", "0018,1114=1.1"],
  geometry: ["0028,0030=0.0909\\0.0909", "0018,1164=0.1\\0.1", "0018,1114=1.1", "0028,0A02=GEOMETRY"],
  fiducial: ["0028,0030=0.095\\0.095", "0018,1164=0.1\\0.1", "0018,1114=1.1", "0028,0A02=FIDUCIAL"],
  other_calibration: ["0028,0030=0.1\\0.1", "0028,0A02=PHANTOM OF THE MAKER"],
  calibrated_nothing: ["0018,1164=0.1\\0.1", "0028,0A02=GEOMETRY"],
  untold: ["0028,0030=0.0909\\0.0909", "0018,1164=0.1\\0.1", "0018,1114=1.1"],
  other_width: ["0028,0030=0.08\\0.08", "0018,1164=0.1\\0.1", "0018,1114=1.1"],
  larger: ["0028,0030=0.12\\0.12", "0018,1164=0.1\\0.1"],
  oblong: ["0018,1164=0.1\\0.2"],
  aspect: ["0018,1164=0.1\\0.1", "0028,0034=1\\2"],
  no_width: ["0028,0030=0\\0"],
  one_number: ["0028,0030=0.1"],
  no_number: ["0028,0030=wide\\0.1"],
  burned_in: ["0018,1164=0.1\\0.1", "0028,0301=YES"],
  window: ["0028,1050=1000\\2000", "0028,1051=500\\900"],
  sigmoid: ["0028,1050=1000", "0028,1051=500", "0028,1056=SIGMOID"],
  exact: ["0028,1050=1000", "0028,1051=500", "0028,1056=LINEAR_EXACT"],
  rescaled: ["0028,1052=-1000", "0028,1053=2.5"],
  sides: ["0020,0060=L", "0008,0022=20200102", "0008,0070=Maker", "0008,1090=Model 1"],
};

/** Names as bytes, in the character sets that Japanese and other hospitals write. */
const names: readonly (readonly [sets: string, name: string])[] = [
  ["\\ISO 2022 IR 87", "Yamada^Tarou=\x1b$B;3ED\x1b(B^\x1b$BB@O:\x1b(B=\x1b$B$d$^$@\x1b(B^\x1b$B$?$m$&\x1b(B"],
  ["ISO 2022 IR 13\\ISO 2022 IR 87", "\xd4\xcf\xc0\xde^\xc0\xdb\xb3=\x1b$B;3ED\x1b(J^\x1b$BB@O:\x1b(J"],
  ["\\ISO 2022 IR 159", "Doe^Jane=\x1b$(D0!\x1b(B^X"],
  ["ISO_IR 100", "M\xfcller^J\xf6rg"],
  ["ISO_IR 192", Buffer.from("Doe^J=山田^太郎").toString("latin1")],
  ["GB18030", "Wang^XiaoDong=\xcd\xf5^\xd0\xa1\xb6\xab"],
  ["\\ISO 2022 IR 149", "Hong^Gildong=\x1b$)C\xfb\xf3^\x1b$)C\xd1\xce\xd4\xd7"],
  ["", "M\xfcller^J"],
];

beforeAll(() => {
  if (leftOut) return;
  folder = mkdtempSync(join(tmpdir(), "films-"));
  execFileSync(join(project, "tests/film/make-films"), [folder], { stdio: "ignore" });
  const modify = (file: string, ...words: string[]): void => void execFileSync("dcmodify", ["-nb", "-ie", ...words, file], { stdio: "ignore" });
  const bare = join(folder, "scale_nothing.dcm");
  copyFileSync(join(folder, "grey12.dcm"), bare);
  modify(bare, "-e", "0018,1164", "-e", "0018,1110", "-e", "0018,1111");
  for (const [name, elements] of Object.entries(headers)) {
    const file = join(folder, `scale_${name}.dcm`);
    if (file !== bare) copyFileSync(bare, file);
    if (elements.length > 0) modify(file, ...elements.flatMap((element) => ["-i", element]));
  }
  names.forEach(([sets, name], i) => {
    const file = join(folder, `name_${i}.dcm`);
    copyFileSync(bare, file);
    modify(file, "-m", `0008,0005=${sets}`, "-m", `0010,0010=${"N".repeat(name.length + (name.length % 2))}`);
    const bytes = readFileSync(file);
    bytes.write(name.padEnd(name.length + (name.length % 2)), bytes.indexOf("NNNN"), "latin1");
    writeFileSync(file, bytes);
  });
  films = readdirSync(folder).sort();
}, 60_000);

afterAll(() => rmSync(folder, { recursive: true, force: true }));

function read(name: string): Promise<Film> {
  return decodeFilm(new Uint8Array(readFileSync(join(folder, name))));
}

/** Largest difference and how many there are. */
function difference(ours: ArrayLike<number>, theirs: ArrayLike<number>): { largest: number; at: number } {
  let [largest, at] = [ours.length === theirs.length ? 0 : Infinity, -1];
  for (let i = 0; i < theirs.length; ++i) {
    const apart = Math.abs((ours[i] ?? NaN) - (theirs[i] ?? NaN));
    if (!(apart <= largest)) [largest, at] = [apart, i];
  }
  return { largest, at };
}

/** Samples of a P5 of 16 bits or a P6 of 8. */
function pnmSamples(data: Buffer): { head: string; samples: number[] } {
  const end = data.indexOf("\n") + 1;
  const head = data.subarray(0, end).toString();
  const size = head.startsWith("P5") ? 2 : 1;
  return { head, samples: Array.from({ length: (data.length - end) / size }, (_, i) => data.readUIntBE(end + i * size, size)) };
}

/** Colours as the native reader has them: multiplied by alpha. */
function multiplied(samples: Uint8ClampedArray): number[] {
  return Array.from({ length: (samples.length / 4) * 3 }, (_, i) => {
    const at = Math.floor(i / 3) * 4;
    return Math.trunc(((samples[at + (i % 3)] ?? 0) * (samples[at + 3] ?? 0) + 127) / 255);
  });
}

describe.skipIf(leftOut)("films of every kind", () => {
  test("have the samples that the native reader has", async () => {
    const unlike: string[] = [];
    let compared = 0;
    for (const name of films) {
      const native = spawnSync(samplesProgram, [join(folder, name)], { maxBuffer: 1 << 26 });
      expect(native.status, name).toBe(0);
      const theirs = pnmSamples(native.stdout);
      let film: Film;
      try {
        film = await read(name);
      } catch (error) {
        if (!(error instanceof FilmError) || !refused.test(name)) unlike.push(`${name}: ${String(error)}`);
        continue;
      }
      if (refused.test(name)) unlike.push(`${name}: is read`);
      const grey = film.kind === "grey";
      const ours = film.kind === "grey" ? film.samples : multiplied(film.samples);
      // Libraries interpolate and round the colours of JPEG in their own ways; all else is equal.
      const near = grey ? 0 : /jpeg|baseline|img2dcm|photograph|colour|progressive|j2k_lossy/.test(name) ? 3 : 0;
      const { largest, at } = difference(ours, theirs.samples);
      const head = `P${grey ? 5 : 6} ${film.width} ${film.height} ${grey ? 65535 : 255}\n`;
      if (head !== theirs.head || !(largest <= near)) unlike.push(`${name}: ${head.trim()}, ${largest} at sample ${at}`);
      ++compared;
    }
    expect(unlike).toEqual([]);
    expect(compared).toBeGreaterThan(230);
  }, 120_000);

  test("have the scale, patient and dates that `cephtool film` tells", async () => {
    const output = execFileSync(cephtool, ["film", "--format", "json", ...films], { cwd: folder, maxBuffer: 1 << 26 });
    interface Told {
      readonly [name: string]: unknown;
      readonly file: string;
      readonly doubts: readonly string[];
    }
    const told = (JSON.parse(output.toString()) as { films: Told[] }).films;
    expect(told.length).toBe(films.length);
    for (const theirs of told) {
      if (refused.test(theirs.file)) continue;
      const { header, ...film } = await read(theirs.file);
      const scale = scaleOfHeader(header);
      const { patient } = header;
      const date = (text: string): string | null => (text === "" ? null : text.replace(/^(\d{4})(\d\d)(\d\d)$/, "$1-$2-$3"));
      const sexes: Readonly<Record<string, string>> = { F: "female", M: "male" };
      expect(
        {
          format: header.format,
          compression: header.compression,
          width_px: film.width,
          height_px: film.height,
          frames: header.frames,
          mm_per_pixel: scale.kind === "known" ? scale.mmPerPixel : null,
          name: patient.name || null,
          id: patient.id || null,
          sex: sexes[patient.sex] ?? null,
          birth: date(patient.birthDate),
          film: date(patient.filmDate),
          made_by: header.madeBy || null,
        },
        theirs.file,
      ).toEqual(Object.fromEntries(["format", "compression", "width_px", "height_px", "frames", "mm_per_pixel", "name", "id", "sex", "birth", "film", "made_by"].map((key) => [key, theirs[key]])));
      if (scale.kind === "known") expect(theirs.scale, theirs.file).toContain(wordsOf(scale.source, "en"));
      const words = [...header.doubts, ...scale.doubts, ...(scale.kind === "contradictory" ? [scale.error] : [])].map((said) => wordsOf(said, "en"));
      const all = JSON.stringify(theirs.doubts) + JSON.stringify(theirs.scale);
      for (const doubt of words) expect(all, theirs.file).toContain(JSON.stringify(doubt).slice(1, -2));
      const own = theirs.doubts.filter((doubt) => !/^By its scale|^It is/.test(doubt));
      expect(own.filter((doubt) => !words.includes(doubt)), theirs.file).toEqual([]);
      // Names of signs that a set lacks are told as "?", and no sentence keeps a place unfilled.
      expect(words.join()).not.toMatch(/\{\w+\}/);
    }
  }, 120_000);

  test("come to the screen in the greys of the PNG that `cephtool film` writes", async () => {
    const shown = films.filter((name) => /^scale_(window|sigmoid|exact|rescaled|nothing)|^(grey|signed).*implicit|white_is_low|grey16_lzw\.tif/.test(name));
    expect(shown.length).toBeGreaterThan(10);
    for (const name of shown) {
      const png = execFileSync(cephtool, ["film", name, "--format", "png"], { cwd: folder, maxBuffer: 1 << 26, stdio: ["ignore", "pipe", "ignore"] });
      const [film, theirs] = [await read(name), await decodeFilm(new Uint8Array(png))];
      if (film.kind !== "grey") throw new Error(`${name} is not grey`);
      const table = shades(film);
      const ours = Array.from(film.samples, (sample) => table[sample] ?? -1);
      const seen = theirs.kind === "grey" ? theirs.samples : Array.from(theirs.samples).filter((_, i) => i % 4 === 0);
      expect(difference(ours, seen), name).toEqual({ largest: 0, at: -1 });
    }
  }, 60_000);

  test("are refused with a place when they end early or are damaged, natively and here", async () => {
    for (const name of ["grey16.png", "grey16_lzw.tif", "grey8_zip_tiled.tif", "photograph.jpg", "grey16.dcm", "grey16_rle.dcm", "grey16_jpegls.dcm", "grey16_lossless_sv1.dcm", "grey16_j2k.dcm", "grey16_deflated.dcm", "rgb8_baseline.dcm"]) {
      const bytes = readFileSync(join(folder, name));
      for (let cut = 0; cut < bytes.length - 9; cut += Math.max(1, Math.trunc(bytes.length / 12))) {
        const failure = await decodeFilm(new Uint8Array(bytes.subarray(0, cut))).then(() => null, (error: unknown) => error);
        expect(failure, `${name} cut at ${cut}`).toBeInstanceOf(FilmError);
      }
      // Any byte changed: a film or a sentence, and never anything else.
      for (let at = 0; at < bytes.length; at += 1 + Math.trunc(bytes.length / 60)) {
        const changed = new Uint8Array(bytes);
        changed[at] = (changed[at] ?? 0) ^ (1 << at % 8);
        const failure = await decodeFilm(changed).then(() => null, (error: unknown) => error);
        if (failure) expect(failure, `${name} changed at ${at}`).toBeInstanceOf(FilmError);
      }
    }
  }, 120_000);
});
