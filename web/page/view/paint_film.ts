import { orientation } from "../state/desk.ts";
import { drawFilm } from "./picture.ts";
import { camera, pixelRatio, viewSize } from "./stage.ts";

export function paintFilm(context: CanvasRenderingContext2D): void {
  drawFilm(context, orientation.value, camera.value, viewSize.value, pixelRatio.value);
}
