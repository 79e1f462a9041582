import type { FilmPicture } from "../../engine/engine.js";
import { orientation } from "../state/desk.ts";
import { drawFilm } from "../view/picture.ts";
import { filmSize } from "../view/stage.ts";
import { blobOf } from "./save.ts";

/** The film as it is seen, in the pixels that landmarks are counted in. */
export async function turnedPicture(type: "image/png" | "image/jpeg"): Promise<FilmPicture> {
  const size = filmSize.peek();
  const canvas = document.createElement("canvas");
  canvas.width = size.width;
  canvas.height = size.height;
  drawFilm(canvas.getContext("2d")!, orientation.peek(), { zoom: 1, x: 0.5, y: 0.5 }, size, 1);
  const blob = await blobOf(canvas, type);
  return { bytes: new Uint8Array(await blob.arrayBuffer()), ...size };
}
