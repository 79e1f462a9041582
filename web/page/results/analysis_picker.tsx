import type { Analysis, AnalysisKind } from "../../engine/engine.js";
import { analysesOfKind, chosenNames, history } from "../state/desk.ts";
import { choosing } from "../state/work.ts";
import { KindChoice } from "../patient/kind_choice.tsx";
import { beginGuide } from "../place/guide.ts";
import { language, words } from "../words/words.ts";

function choose(names: readonly string[]): void {
  history.change((now) => choosing(now, names));
  beginGuide();
}

function Choice({ analysis }: { analysis: Analysis }) {
  const chosen = chosenNames.value;
  return (
    <label class="choice" title={analysis.comment}>
      <input
        type="checkbox"
        checked={chosen.includes(analysis.name)}
        onChange={(event) =>
          choose(event.currentTarget.checked ? [...chosen, analysis.name] : chosen.filter((name) => name !== analysis.name))
        }
      />
      <span>{analysis.label[language.value]}</span>
      <small>{analysis.landmarks.length}</small>
    </label>
  );
}

/** Which analyses are made; what they need is asked for. */
export function AnalysisPicker() {
  const t = words.value;
  const all = analysesOfKind.value;
  const kinds = [...new Set(all.map((analysis) => analysis.kind))];
  const count = all.filter((analysis) => chosenNames.value.includes(analysis.name)).length;
  const ofKind = (wanted: AnalysisKind | undefined): readonly Analysis[] => all.filter(({ kind }) => kind === wanted);
  return (
    <details class="picker" open={count === 0}>
      <summary>{t.analysesChosen(count, all.length)}</summary>
      <div class="buttons">
        <KindChoice />
        <button type="button" onClick={() => choose(ofKind(kinds[0]).map(({ name }) => name))}>{t.all}</button>
        <button type="button" onClick={() => choose([])}>{t.none}</button>
      </div>
      {kinds.map((kind) => (
        <fieldset key={kind}>
          <legend>{t.analysisKinds[kind]}</legend>
          {ofKind(kind).map((analysis) => <Choice key={analysis.id} analysis={analysis} />)}
        </fieldset>
      ))}
    </details>
  );
}
