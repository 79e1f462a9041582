// What the page works on: one value that no one alters; every change replaces it as a whole.
import type { Case, Kind } from "../../engine/engine.js";
import type { FilmPlane, GreyWindow } from "../film/film.ts";

export type { Case, Kind, Sex } from "../../engine/engine.js";

/** Pixels of the film as it is shown, turned and mirrored; x to the right, y down. */
export type Point = [x: number, y: number];

/** Two points on the ruler of the film, so many millimetres apart; magnification 1 where the ruler lies in the median plane. */
export interface Ruler {
  readonly from: Point;
  readonly to: Point;
  readonly lengthMm: number;
  readonly magnification: number;
}

/** Who says how wide a pixel is. */
export type ScaleOrigin =
  | { readonly kind: "ruler"; readonly ruler: Ruler }
  | { readonly kind: "header"; readonly plane: FilmPlane; readonly words: { readonly en: string; readonly ja: string } }
  | { readonly kind: "typed" }
  | { readonly kind: "case" };

/** How the film's file is turned to be shown: first mirrored left to right, then turned clockwise by quarters. */
export interface Orientation {
  readonly mirrored: boolean;
  readonly quarters: 0 | 1 | 2 | 3;
}

/** What undo goes back in. */
export interface Work {
  readonly case: Case;
  readonly scale: ScaleOrigin | null;
  readonly orientation: Orientation;
  /** Landmarks that are not asked for any more. */
  readonly skipped: readonly string[];
  /** Names of the analyses' files. */
  readonly analyses: readonly string[];
}

/** How it is looked at, kept with the case. */
export interface View {
  /** The landmark that is asked for or was chosen; null when none is. */
  readonly current: string | null;
  readonly tone: Tone;
  readonly tracing: boolean;
  readonly outlines: boolean;
  readonly labels: boolean;
  /** Names of display modes. */
  readonly modes: readonly string[];
  /** A film is being read again, and nothing of the reading before is shown. */
  readonly isBlind?: boolean;
}

/** How the greys are changed: brightness added (-1 to 1), contrast about the middle (1: as it is); window null: the film's own. */
export interface Tone {
  readonly brightness: number;
  readonly contrast: number;
  readonly inverted: boolean;
  readonly clahe: boolean;
  readonly window: GreyWindow | null;
}

export interface Document {
  readonly work: Work;
  readonly view: View;
}

export const plainTone: Tone = { brightness: 0, contrast: 1, inverted: false, clahe: false, window: null };
const upright: Orientation = { mirrored: false, quarters: 0 };

export function emptyDocument(kind: Kind, analyses: readonly string[]): Document {
  return {
    work: { case: { format: "cephtool-case", version: 1, kind, landmarks: {} }, scale: null, orientation: upright, skipped: [], analyses },
    view: { current: null, tone: plainTone, tracing: true, outlines: true, labels: true, modes: [] },
  };
}
