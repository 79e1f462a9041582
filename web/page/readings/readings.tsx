import { batch } from "@preact/signals";
import type { ReadingComparison } from "../../engine/engine.js";
import { beginReading, isReadAgain, openOtherReading } from "../files/keeping.ts";
import { panel } from "../parts/panel_choice.ts";
import { beginGuide, chooseLandmark } from "../place/guide.ts";
import { film, history, shownRow } from "../state/desk.ts";
import { placedNames } from "../state/measuring.ts";
import { hovered } from "../view/stage.ts";
import { language, sayError, words } from "../words/words.ts";
import { bothReadings, comparison, isBlind, withoutReading } from "./comparison.ts";
import { fixed } from "./number_words.ts";
import { saveReadings } from "./save_readings.ts";

function readAgain(): void {
  history.commit();
  const { work, view } = history.document.peek();
  batch(() => {
    shownRow.value = hovered.value = null;
    beginReading({ work: withoutReading(work), view: { ...view, current: null, isBlind: true } });
    panel.value = "landmarks";
  });
  beginGuide();
}

function Landmarks({ landmarks }: ReadingComparison) {
  const t = words.value;
  return (
    <table class="reading-landmarks">
      <thead>
        <tr>
          {[t.landmark, t.along, t.across, t.distance].map((title) => <th key={title} scope="col">{title}</th>)}
        </tr>
      </thead>
      <tbody>
        {[...landmarks].sort((a, b) => b.distance - a.distance).map(({ name, along, across, distance }) => (
          <tr key={name} onMouseEnter={() => (hovered.value = name)} onMouseLeave={() => (hovered.value = null)}>
            <th scope="row"><button type="button" onClick={() => chooseLandmark(name)}>{name}</button></th>
            <td>{fixed(along, 1)}</td>
            <td>{fixed(across, 1)}</td>
            <td>{fixed(distance, 1)}</td>
          </tr>
        ))}
      </tbody>
    </table>
  );
}

function Values({ values }: ReadingComparison) {
  const t = words.value;
  return (
    <>
      {[...new Set(values.map(({ analysis }) => analysis))].map((analysis) => (
        <table key={analysis.id}>
          <caption>{analysis.label[language.value]}</caption>
          <thead>
            <tr>
              {[t.item, t.firstValue, t.secondValue, t.difference, t.dahlberg].map((title) => <th key={title} scope="col">{title}</th>)}
            </tr>
          </thead>
          <tbody>
            {values.filter((value) => value.analysis === analysis).map(({ item, first, second, text, dahlberg }) => (
              <tr key={`${item.name} ${item.formula}`} class={item.marked ? "marked" : ""}>
                <th scope="row">{item.label[language.value]}</th>
                <td>{first}</td>
                <td>{second}</td>
                <td>{text}</td>
                <td>{dahlberg.toFixed(2)}</td>
              </tr>
            ))}
          </tbody>
        </table>
      ))}
    </>
  );
}

function Compared() {
  const t = words.value;
  const now = comparison.value;
  if (!now) return null;
  if ("trouble" in now) return <p class="remark warning">{now.trouble === "turned" ? t.turnedOtherwise : now.trouble.words}</p>;
  const { found } = now;
  return (
    <section class="readings">
      <h3 class="small">{t.readingsCompared}</h3>
      {found.dahlbergAlong !== null && found.dahlbergAcross !== null && (
        <p>{t.dahlbergOfLandmarks(found.dahlbergAlong.toFixed(2), found.dahlbergAcross.toFixed(2))}</p>
      )}
      <Landmarks {...found} />
      <Values {...found} />
    </section>
  );
}

/** Reading the film again, blind to the first time, and what came out of it. */
export function Readings() {
  const t = words.value;
  if (film.value === null || isBlind.value) return null;
  return (
    <>
      <h2>{t.readingsTitle}</h2>
      <p class="quiet">{t.readingsHow}</p>
      <div class="buttons">
        <button type="button" class="primary" disabled={placedNames.value.size === 0} onClick={readAgain}>{t.readAgain}</button>
        {comparison.value && (
          <>
            <button type="button" onClick={() => void openOtherReading().catch(sayError)}>{isReadAgain.value ? t.openFirstReading : t.openSecondReading}</button>
            <button type="button" onClick={() => saveReadings([bothReadings()!])}>{t.saveReadings}</button>
          </>
        )}
      </div>
      <Compared />
    </>
  );
}
