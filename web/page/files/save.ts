// Cases and results as files.
import type { Case, CaseFormat } from "../../engine/engine.js";
import { chosenAnalyses, engine, film, record, work } from "../state/desk.ts";
import { constructed, session } from "../state/measuring.ts";
import { tracingOptions } from "../view/tracings.ts";
import { language, say, sayError, sayNothing, words } from "../words/words.ts";
import { download, fileStem } from "./download.ts";
import { turnedPicture } from "./turned_picture.ts";

/** The case with what the page constructed, so that other programs measure the same. Turned, it no longer lies on its film's file. */
function caseToSave(): Case {
  const now = record.peek();
  const made = [...constructed.peek()];
  const { mirrored, quarters } = work.peek().orientation;
  const { image, ...rest } = now;
  return {
    ...rest,
    ...(image !== undefined && !mirrored && quarters === 0 && { image }),
    landmarks: { ...now.landmarks, ...Object.fromEntries(made) },
    ...(made.length > 0 && { "x-constructed": made.map(([name]) => name) }),
  };
}

export function saveCase({ name, extension }: CaseFormat): void {
  sayNothing();
  try {
    const { bytes, lost } = engine.peek()!.writeCase(caseToSave(), name);
    download(bytes, fileStem(record.peek()) + extension);
    if (lost.length > 0) say(words.peek().formatLoses(lost.join("; ")));
  } catch (error) {
    sayError(error);
  }
}

export function saveResults(format: "csv" | "json"): void {
  try {
    const analyses = chosenAnalyses.peek();
    const ready = engine.peek()!;
    const text = format === "csv" ? ready.resultsCsv([caseToSave()], analyses, language.peek()) : ready.resultsJson([caseToSave()], analyses, language.peek());
    download(text, `${fileStem(record.peek())}.results.${format}`, format === "csv" ? "text/csv" : "application/json");
  } catch (error) {
    sayError(error);
  }
}

/** The tracing over the film at true size. */
async function tracingOverFilm(style: "paper" | "film"): Promise<{ svg: string; widthMm: number; heightMm: number }> {
  const under = style === "film" && film.peek() ? await turnedPicture("image/jpeg") : null;
  return session.peek()!.tracingSvg({ ...tracingOptions.peek(), style, ...(under && { film: under }) });
}

export async function saveTracing(format: "svg" | "png", style: "paper" | "film"): Promise<void> {
  try {
    const { svg, widthMm, heightMm } = await tracingOverFilm(style);
    const name = `${fileStem(record.peek())}.tracing.${format}`;
    if (format === "svg") return download(svg, name, "image/svg+xml");
    download(await rasterised(svg, widthMm, heightMm), name);
  } catch (error) {
    sayError(error);
  }
}

const dotsPerMm = 12; // 305 dpi

async function rasterised(svg: string, widthMm: number, heightMm: number): Promise<Blob> {
  const address = URL.createObjectURL(new Blob([svg], { type: "image/svg+xml" }));
  try {
    const image = new Image();
    image.src = address;
    await image.decode();
    const canvas = document.createElement("canvas");
    canvas.width = Math.round(widthMm * dotsPerMm);
    canvas.height = Math.round(heightMm * dotsPerMm);
    canvas.getContext("2d")!.drawImage(image, 0, 0, canvas.width, canvas.height);
    return await blobOf(canvas, "image/png");
  } finally {
    URL.revokeObjectURL(address);
  }
}

export function blobOf(canvas: HTMLCanvasElement, type: "image/png" | "image/jpeg"): Promise<Blob> {
  return new Promise((resolve, reject) =>
    canvas.toBlob((blob) => (blob ? resolve(blob) : reject(new Error(words.peek().noPicture))), type, 0.92),
  );
}

