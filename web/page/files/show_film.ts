import type { Film } from "../film/film.ts";
import { greyOf } from "../film/shown_film.ts";
import { film, filmFile } from "../state/desk.ts";

/** Greys that a scanner has written as colours are shown as greys, which have a window. */
export function showFilm(read: Film, file: File): void {
  film.value = read.kind === "colour" ? (greyOf(read) ?? read) : read;
  filmFile.value = file;
}

export function showNoFilm(): void {
  film.value = null;
  filmFile.value = null;
}
