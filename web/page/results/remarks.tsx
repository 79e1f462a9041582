import { beginCalibration } from "../calibrate/draft.ts";
import { film, history, scale, scaleOrigin } from "../state/desk.ts";
import { askedAtRest } from "../state/measuring.ts";
import { panel } from "../parts/panel_choice.ts";
import { Icon } from "../parts/icon.tsx";
import { outliers } from "../state/outliers.ts";
import { chooseLandmark } from "../place/guide.ts";
import { filmSize } from "../view/stage.ts";
import { type Turn, turnedWork } from "../view/orientation.ts";
import { language, words } from "../words/words.ts";

const found = askedAtRest((session) => session.remarks(language.value), []);
function turn(way: Turn): void {
  history.change((now) => turnedWork(now, way, filmSize.peek()));
}

function calibrate(): void {
  panel.value = "scale";
  if (film.peek()) beginCalibration();
}

/** What a person can do about a remark here. */
const waysOut: Readonly<Record<string, { readonly label: () => string; readonly go: () => void }>> = {
  mirrored: { label: () => words.value.turnMirror, go: () => turn("mirror") },
  y_flipped: { label: () => words.value.turnUpsideDown, go: () => turn("upside_down") },
  norms_by_sex: { label: () => words.value.panels.patient, go: () => (panel.value = "patient") },
  reversed: { label: () => words.value.turnMirror, go: () => turn("mirror") },
};

/** Warnings on how the numbers are to be read. */
export function Remarks() {
  const t = words.value;
  const origin = scaleOrigin.value;
  const plane = origin?.kind === "header" ? origin.plane : "patient";
  return (
    <div class="remarks" role="status">
      {scale.value === null && (
        <p class="remark warning">
          <Icon name="warning" /> {t.noScale} <button type="button" onClick={calibrate}>{t.calibrate}</button>
        </p>
      )}
      {plane !== "patient" && (
        <p class="remark warning">
          <Icon name="warning" /> {t.planes[plane]} <button type="button" onClick={() => (panel.value = "scale")}>{t.scaleTitle}</button>
        </p>
      )}
      {found.value
        .filter(({ code }) => code !== "no_scale")
        .map(({ code, text }) => (
          <p key={code} class="remark warning">
            <Icon name="warning" /> {t.remarks[code] ?? text}{" "}
            {waysOut[code] && <button type="button" onClick={waysOut[code].go}>{waysOut[code].label()}</button>}
          </p>
        ))}
      {outliers.value.map(({ name, text }) => (
        <p key={name} class="remark warning">
          <Icon name="warning" /> {text} <button type="button" onClick={() => chooseLandmark(name)}>{t.showLandmark(name)}</button>
        </p>
      ))}
    </div>
  );
}
