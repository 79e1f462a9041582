// The page as the guide shows it, drawn anew: docs/pictures/digitiser*.png.
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join, resolve } from "node:path";
import { test } from "vitest";
import { Browser, built } from "../browser/harness.ts";
import { Person } from "../browser/person.ts";
import { dicomOf } from "../drawn/files.ts";
import { drawFilm } from "../drawn/film.ts";

const pictures = resolve(import.meta.dirname, "../../../docs/pictures");

test("the page in both languages, while landmarks are placed and when values are read", async () => {
  const folder = mkdtempSync(join(tmpdir(), "pictures-"));
  const film = drawFilm();
  writeFileSync(join(folder, "film.dcm"), dicomOf(film));
  const browser = await Browser.open(await built(), { viewport: { width: 1280, height: 800 } });
  for (const language of ["en", "ja"] as const) {
    const one = new Person(await browser.page(), film, language);
    const name = language === "ja" ? "digitiser-ja" : "digitiser";
    if (language === "ja") await one.page.getByRole("button", { name: "日本語" }).click();
    await one.ready();
    await one.open(join(folder, "film.dcm"));
    await one.panel("landmarks");
    await one.placeAll(undefined, 6);
    await one.page.mouse.move(...(await one.onScreen(film.landmarks["U1"]!)));
    await one.page.screenshot({ path: join(pictures, `${name}-place.png`) });
    await one.placeAll();
    await one.panel("results");
    await one.page.getByText(language === "ja" ? "ANB角" : "ANB", { exact: true }).first().hover();
    await one.page.waitForTimeout(300); // what is not measured fades
    await one.page.screenshot({ path: join(pictures, `${name}.png`) });
    await one.page.evaluate(() => localStorage.clear());
    await one.page.close();
  }
  await browser.close();
  rmSync(folder, { recursive: true });
}, 180_000);
