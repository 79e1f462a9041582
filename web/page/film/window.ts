// Films as they are seen: up to 16 bits of grey through a window of 8.
import type { GreyFilm, GreyRule, GreyTable, GreyWindow } from "./film.ts";

/** What a table makes of a value. */
function inTable(table: GreyTable, value: number): number {
  const at = Math.min(Math.max(value - table.first, 0), table.entries.length - 1);
  return table.entries[Math.trunc(at)] ?? 0;
}

/** The value of the device that a sample stands for. */
function deviceValue(rule: GreyRule, sample: number): number {
  const stored = sample + rule.lowest;
  return rule.modality ? inTable(rule.modality, stored) : stored * rule.slope + rule.intercept;
}

/** From 0 to 1 within the window. DICOM PS3.3 C.11.2.1.2.1, C.11.2.1.3.2 and C.11.2.1.3.1, in this order. */
function brightness({ centre, width, shape }: GreyWindow, value: number): number {
  switch (shape) {
    case "linear":
      if (width <= 1) return value <= centre - 0.5 ? 0 : 1;
      return (value - (centre - 0.5)) / (width - 1) + 0.5;
    case "linear_exact":
      return (value - centre) / width + 0.5;
    case "sigmoid":
      return 1 / (1 + Math.exp((-4 * (value - centre)) / width));
  }
}

/** Black at `low`, white at `high`, in values of the device. */
function windowBetween(low: number, high: number): GreyWindow {
  const width = Math.max(high - low, 1e-9);
  return { centre: low + width / 2, width, shape: "linear_exact" };
}

const knownExtremes = new WeakMap<Uint8Array | Uint16Array, readonly [number, number]>();

/** The least and the greatest sample, looked for once a film. */
export function extremes(samples: Uint8Array | Uint16Array): readonly [number, number] {
  const known = knownExtremes.get(samples);
  if (known) return known;
  let low = Infinity;
  let high = -Infinity;
  for (let i = 0; i < samples.length; ++i) {
    const sample = samples[i] ?? 0;
    if (sample < low) low = sample;
    if (sample > high) high = sample;
  }
  knownExtremes.set(samples, [low, high]);
  return [low, high];
}

/** From the lowest value in the film to the highest. */
export function fullWindow(film: GreyFilm): GreyWindow {
  const [one, other] = extremes(film.samples).map((sample) => deviceValue(film.rule, sample));
  return windowBetween(Math.min(one ?? 0, other ?? 0), Math.max(one ?? 0, other ?? 0));
}

/** All that as many bits can hold as the samples use, of 8 at least: scanners put 12 bits into 16. */
function depthWindow(film: GreyFilm): GreyWindow {
  const [, highest] = extremes(film.samples);
  let bits = Math.min(film.bits, 8);
  while (bits < film.bits && highest >> bits !== 0) ++bits;
  return windowBetween(0, 2 ** bits - 1);
}

/**
 * What a film is shown through until a person asks for something else: the window of the file; null for its table (VOI
 * LUT); without either, all that its depth can hold, but of DICOM films of more than 8 bits from the lowest value to the highest.
 */
export function defaultWindow(film: GreyFilm): GreyWindow | null {
  const { rule, header, bits } = film;
  if (rule.windows[0]) return rule.windows[0];
  if (rule.voi) return null;
  const measured = header.format === "DICOM" && bits > 8;
  return measured || rule.lowest < 0 || rule.modality ? fullWindow(film) : depthWindow(film);
}

/** What a person has changed of how a film is shown. */
export interface GreyView {
  /** Null: the table of the file. */
  readonly window: GreyWindow | null;
  readonly inverted: boolean;
  /** Added to the brightness, -1 to 1. */
  readonly brightness: number;
  /** How steep the greys are round the middle, 1 as they are. */
  readonly contrast: number;
}

export function plainView(film: GreyFilm): GreyView {
  return { window: defaultWindow(film), inverted: false, brightness: 0, contrast: 1 };
}

/** What each sample becomes, 0 black and 255 white: 2^bits entries. */
export function shades(film: GreyFilm, view: GreyView = plainView(film)): Uint8Array {
  const { rule } = film;
  const tableWhite = rule.voi ? 2 ** rule.voi.bits - 1 : 1;
  const inverted = rule.whiteIsLow !== view.inverted;
  const table = new Uint8Array(2 ** film.bits);
  for (let sample = 0; sample < table.length; ++sample) {
    const value = deviceValue(rule, sample);
    const seen = view.window ? brightness(view.window, value) : rule.voi ? inTable(rule.voi, value) / tableWhite : 0;
    const bright = Math.min(Math.max(seen, 0), 1);
    const turned = inverted ? 1 - bright : bright;
    const adjusted = (turned - 0.5) * view.contrast + 0.5 + view.brightness;
    table[sample] = Math.trunc(Math.min(Math.max(adjusted, 0), 1) * 255 + 0.5);
  }
  return table;
}
