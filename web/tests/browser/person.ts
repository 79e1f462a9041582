// What a person does on the page, found by the words that a person reads.
import { readFileSync } from "node:fs";
import { basename } from "node:path";
import { expect } from "vitest";
import type { Locator, Page } from "playwright-core";
import { english } from "../../page/words/english.ts";
import { japanese } from "../../page/words/japanese.ts";
import type { Panel } from "../../page/parts/panel_choice.ts";
import type { DrawnFilm, Point } from "../drawn/film.ts";

export class Person {
  readonly words: typeof english;
  readonly language: "en" | "ja";
  readonly page: Page;
  readonly film: DrawnFilm;

  constructor(page: Page, film: DrawnFilm, language: "en" | "ja" = "en") {
    this.page = page;
    this.film = film;
    this.language = language;
    this.words = language === "ja" ? japanese : english;
  }

  button(name: string, within: Page | Locator = this.page): Locator {
    return within.getByRole("button", { name, exact: true });
  }

  async ready(): Promise<void> {
    await this.page.getByText(this.words.staysHere).waitFor();
  }

  async open(...files: string[]): Promise<void> {
    await this.page.setInputFiles("#file-picker", files);
    await this.page.getByRole("toolbar", { name: this.words.filmTools }).waitFor();
  }

  /** Gives the page a file as the clipboard or a mouse does. */
  async give(way: "paste" | "drop", path: string): Promise<void> {
    const given = [basename(path), readFileSync(path, "base64")] as const;
    const files = await this.page.evaluateHandle(([name, bytes]) => {
      const transfer = new DataTransfer();
      transfer.items.add(new File([Uint8Array.from(atob(bytes), (digit) => digit.charCodeAt(0))], name));
      return transfer;
    }, given);
    if (way === "drop") await this.page.dispatchEvent(".desk", "drop", { dataTransfer: files });
    else await files.evaluate((clipboardData) => dispatchEvent(new ClipboardEvent("paste", { clipboardData })));
    await this.page.getByRole("toolbar", { name: this.words.filmTools }).waitFor();
  }

  /** How many pixels about a place of the film are drawn in the colour of constructed points. */
  async violetAt(place: Point): Promise<number> {
    const at = await this.onScreen(place);
    return this.page.locator(".layer-marks").evaluate((sheet: HTMLCanvasElement, [x, y]) => {
      const { left, top } = sheet.getBoundingClientRect();
      const pixels = sheet.getContext("2d")!.getImageData(x - left - 6, y - top - 6, 13, 13).data;
      let count = 0;
      for (let i = 0; i < pixels.length; i += 4) count += Number(pixels[i + 2]! > 180 && pixels[i + 2]! > pixels[i + 1]! + 40);
      return count;
    }, at);
  }

  async panel(name: Panel): Promise<void> {
    await this.page.getByRole("tab", { name: this.words.panels[name] }).click();
  }

  /** Where a place of the film is on the screen as long as the whole film is seen. */
  async onScreen([x, y]: Point): Promise<Point> {
    const box = await this.page.locator("#film").boundingBox();
    if (!box) throw new Error("no film is seen");
    const { width, height } = this.film;
    const zoom = Math.min((box.width - 24) / width, (box.height - 24) / height);
    return [box.x + (box.width - zoom * width) / 2 + zoom * x, box.y + (box.height - zoom * height) / 2 + zoom * y];
  }

  async click(place: Point): Promise<void> {
    await this.page.mouse.click(...(await this.onScreen(place)));
  }

  /** The landmark that is asked for. */
  async asked(): Promise<string | null> {
    const name = this.page.locator(".guide-name b");
    return (await name.count()) === 0 ? null : name.textContent();
  }

  /** How many of the asked landmarks are placed, "3 of 25". */
  async progress(): Promise<string> {
    return (await this.page.locator(".progress span").textContent()) ?? "";
  }

  async calibrateOnRuler(): Promise<void> {
    await this.panel("scale");
    await this.page.getByLabel(this.words.lengthMm).fill(String(this.film.rulerMm));
    await this.button(this.words.pointOnRuler).click();
    for (const end of this.film.ruler) await this.click(end);
    await this.button(this.words.takeScale).first().click();
    await this.panel("landmarks");
  }

  /** Chooses all analyses of the first group, the lateral ones of a lateral film. */
  async chooseAllAnalyses(panel: "landmarks" | "results" = "landmarks"): Promise<void> {
    await this.panel(panel);
    const picker = this.page.locator(".picker summary").first();
    await picker.click();
    await this.button(this.words.all).click();
    await picker.click();
  }

  /** Places what is asked for by `put` until nothing is asked for, `most` at the most; skips what the drawn face lacks. */
  async placeAll(put: (place: Point) => Promise<void> = (place) => this.click(place), most = Infinity): Promise<string[]> {
    const placed: string[] = [];
    for (let name = await this.asked(); name !== null && placed.length < most; name = await this.asked()) {
      const place = this.film.landmarks[name];
      if (place) {
        await put(place);
        placed.push(name);
      } else {
        await this.button(this.words.skip).click();
      }
      await expect.poll(() => this.asked()).not.toBe(name);
    }
    return placed;
  }

  /** Values of the table, each with the number of its analysis and its item; "" where there is none. */
  async values(): Promise<Map<string, string>> {
    await this.panel("results");
    const analyses = this.page.locator(".analysis");
    await expect.poll(() => analyses.count()).toBeGreaterThan(0);
    const read = new Map<string, string>();
    for (const [i, analysis] of (await analyses.all()).entries()) {
      await analysis.scrollIntoViewIfNeeded();
      // Rows get their words when the page's observer tells that they are seen, which it does before one that came later.
      await analysis.evaluate((element) => new Promise<void>((done) => {
        const later = new IntersectionObserver((entries) => {
          if (!entries.some((entry) => entry.isIntersecting)) return;
          later.disconnect();
          requestAnimationFrame(() => setTimeout(done));
        });
        later.observe(element);
      }));
      const rows = await analysis.locator(".rows .row:not(.heading)").evaluateAll((all) =>
        all.map((row) => [row.querySelector(".name")?.textContent ?? "", row.querySelector(".value")?.textContent ?? ""] as const),
      );
      for (const [name, value] of rows) read.set(`${i} ${name}`, value);
    }
    return read;
  }

  /** What comes down when a choice of the menu "Save" is made, under a name that says nothing of the patient. */
  async saved(choice: string): Promise<string> {
    await this.page.locator("summary", { hasText: this.words.save }).click();
    const [download] = await Promise.all([this.page.waitForEvent("download"), this.button(choice).click()]);
    expect(download.suggestedFilename()).toMatch(/^(lateral|frontal|model)( \d{4}-\d\d-\d\d)?\.[a-z.]+$/);
    return readFileSync(await download.path(), "utf8");
  }

  async case(): Promise<SavedCase> {
    return JSON.parse(await this.saved(`${this.words.formats.json} .json`)) as SavedCase;
  }

  async kept(): Promise<void> {
    await this.page.locator(".saving", { hasText: this.words.saved }).waitFor();
  }
}

export interface SavedCase {
  readonly name?: string;
  readonly sex?: string;
  readonly birth?: string;
  readonly film?: string;
  readonly mm_per_pixel?: number;
  readonly landmarks: Readonly<Record<string, Point>>;
  readonly population?: string;
  readonly user?: Readonly<Record<string, Point>>;
  readonly vertebrae?: Readonly<Record<string, Point>>;
}
