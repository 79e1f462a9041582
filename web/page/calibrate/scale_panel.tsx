import { useComputed, useSignal } from "@preact/signals";
import type { FilmScale } from "../film/film.ts";
import { scaleOfHeader } from "../film/scale.ts";
import { type Sentence, wordsOf } from "../film/sentence.ts";
import { film, history, scale, scaleOrigin, tool } from "../state/desk.ts";
import { scaled } from "../state/work.ts";
import { NumberField } from "../parts/number_field.tsx";
import { language, words } from "../words/words.ts";
import { acceptRuler, beginCalibration, draftRuler, draftScale, endCalibration, takeScale, rulerLengthMm, rulerMagnification } from "./draft.ts";

export function scaleWords(mmPerPixel: number): string {
  return words.value.mmPerPixel(Number(mmPerPixel.toPrecision(6)).toString());
}

function Now() {
  const t = words.value;
  if (scale.value === null) return <p class="remark warning">{t.noScale}</p>;
  const origin = scaleOrigin.value;
  const from =
    origin?.kind === "header"
      ? origin.words[language.value]
      : origin?.kind === "ruler"
        ? t.fromRuler(origin.ruler.lengthMm, origin.ruler.magnification)
        : origin?.kind === "typed"
          ? t.typed
          : t.fromCase;
  return (
    <p>
      <b>{scaleWords(scale.value)}</b> <span class="quiet">{from}</span>{" "}
      <button type="button" onClick={() => history.change((now) => scaled(now, null, null))}>{t.remove}</button>
    </p>
  );
}

function ByRuler() {
  const t = words.value;
  const isOn = tool.value === "calibrate";
  return (
    <fieldset>
      <legend>{t.byRuler}</legend>
      <p class="quiet">{t.byRulerHow}</p>
      <div class="fields">
        <NumberField label={t.lengthMm} value={rulerLengthMm.value} min={0.001} onChange={(mm) => (rulerLengthMm.value = mm)} />
        <NumberField label={t.magnification} value={rulerMagnification.value} min={0.5} onChange={(factor) => (rulerMagnification.value = factor)} />
      </div>
      <p class="quiet">{t.magnificationHow}</p>
      {isOn ? (
        <>
          <p aria-live="polite">{draftScale.value === null ? t.rulerEnds(draftRuler.value.length) : <b>{scaleWords(draftScale.value)}</b>}</p>
          <div class="buttons">
            <button type="button" class="primary" disabled={draftScale.value === null} onClick={acceptRuler}>{t.takeScale}</button>
            <button type="button" onClick={endCalibration}>{t.cancel}</button>
          </div>
        </>
      ) : (
        <button type="button" disabled={film.value === null} onClick={beginCalibration}>{t.pointOnRuler}</button>
      )}
    </fieldset>
  );
}

/** The same words in both languages, since the page may be read in the other one later. */
function inBoth(said: Sentence): { en: string; ja: string } {
  return { en: wordsOf(said, "en"), ja: wordsOf(said, "ja") };
}

export function takeHeader(told: FilmScale & { kind: "known" }): void {
  takeScale(told.mmPerPixel, { kind: "header", plane: told.plane, words: inBoth(told.source) });
}

function ByHeader() {
  const t = words.value;
  const magnification = useSignal(1);
  const told = useComputed<FilmScale | null>(() =>
    film.value ? scaleOfHeader(film.value.header, magnification.value === 1 ? null : magnification.value) : null,
  );
  const now = told.value;
  if (!now) return null;
  return (
    <fieldset>
      <legend>{t.byHeader}</legend>
      {now.kind === "none" && <p class="quiet">{t.headerHasNone}</p>}
      {now.kind === "contradictory" && <p class="remark warning">{wordsOf(now.error, language.value)}</p>}
      {now.kind === "known" && (
        <>
          <p>
            <b>{scaleWords(now.mmPerPixel)}</b> <span class="quiet">{wordsOf(now.source, language.value)}</span>
          </p>
          <p class={now.plane === "patient" ? "quiet" : "remark warning"}>{t.planes[now.plane]}</p>
          {now.plane !== "patient" && (
            <NumberField label={t.magnification} value={magnification.value} min={0.5} onChange={(factor) => (magnification.value = factor)} />
          )}
          <button type="button" onClick={() => takeHeader(now)}>{t.takeScale}</button>
        </>
      )}
      {now.doubts.map((doubt) => <p key={doubt.key} class="remark">{wordsOf(doubt, language.value)}</p>)}
    </fieldset>
  );
}

function ByTyping() {
  const t = words.value;
  const typed = useSignal(scale.peek() ?? 0.1);
  return (
    <fieldset>
      <legend>{t.byTyping}</legend>
      <NumberField label={t.mmPerPixelLabel} value={typed.value} min={0.000001} onChange={(mm) => (typed.value = mm)} />
      <button type="button" onClick={() => takeScale(typed.value, { kind: "typed" })}>{t.takeScale}</button>
    </fieldset>
  );
}

/** How wide a pixel is, and who says so. */
export function ScalePanel() {
  return (
    <div class="scale">
      <h2>{words.value.scaleTitle}</h2>
      <Now />
      <ByRuler />
      <ByHeader />
      <ByTyping />
    </div>
  );
}
