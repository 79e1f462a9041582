import { scaleWords } from "../calibrate/scale_panel.tsx";
import { ChangesTable } from "../compare/changes_table.tsx";
import { chosenAnalyses, engine, record } from "../state/desk.ts";
import { populationLabel } from "../patient/population_choice.tsx";
import { daggersOf } from "../results/daggers.ts";
import { showsErrors } from "../results/row_errors.ts";
import { outliers } from "../state/outliers.ts";
import { rows, session } from "../state/measuring.ts";
import { earlier, registration, tracingOptions } from "../view/tracings.ts";
import { language, words } from "../words/words.ts";
import { PrintedAnalysis } from "./printed_analysis.tsx";
import { PrintedDrawing } from "./printed_drawing.tsx";
import { superimposedDrawing } from "./superimposed_drawing.ts";

function dateWords(date: string): string {
  try {
    return engine.value!.showDate(date, language.value);
  } catch {
    return date;
  }
}

function Facts() {
  const t = words.value;
  const { name, sex, birth, film, mm_per_pixel, kind, population } = record.value;
  const facts: readonly (readonly [string, string | undefined])[] = [
    [t.name, name],
    [t.sex, sex && t[sex]],
    [t.birth, birth && dateWords(birth)],
    [t.filmDate, film && dateWords(film)],
    [t.kind, t.kinds[kind]],
    [t.population, populationLabel(population)],
    [t.scaleTitle, mm_per_pixel === undefined ? t.noScale : scaleWords(mm_per_pixel)],
  ];
  const growth = session.value?.growth(language.value).filter(({ result }) => result !== "") ?? [];
  return (
    <dl class="print-facts">
      {[...facts, ...growth.map(({ what, result }) => [what, result] as const)].map(([what, is]) => is && (
        <div key={what}>
          <dt>{what}</dt>
          <dd>{is}</dd>
        </div>
      ))}
    </dl>
  );
}

function drawing() {
  try {
    return session.value?.tracingSvg({ ...tracingOptions.value, style: "paper" }) ?? null;
  } catch {
    return null; // without a scale there is none
  }
}

/** Patient, a table for each analysis that has a result, and on a page of its own the tracing at true size. */
export function PrintedReport() {
  const t = words.value;
  const now = session.value;
  if (!now) return null;
  now.measure();
  const texts = now.texts(language.value);
  const errors = showsErrors.value ? now.errors(language.value) : { remarks: [], rows: [] };
  const errorOf = new Map(errors.rows.map((error) => [error.row, error]));
  const norms = new Map(now.norms(language.value).map((norm) => [norm.analysis.id, norm]));
  const ofAnalysis = (id: number): number[] => [...rows.value.keys()].filter((row) => rows.value[row]!.analysis.id === id);
  const isFruitful = (id: number): boolean => ofAnalysis(id).some((row) => texts[row]?.value);
  const fruitful = chosenAnalyses.value.filter(({ id }) => isFruitful(id));
  const others = chosenAnalyses.value.filter(({ id }) => !isFruitful(id));
  const page = drawing();
  const laidOver = superimposedDrawing();
  return (
    <article class="print">
      <h1>{t.report}</h1>
      <Facts />
      {now.remarks(language.value).map(({ code, text }) => <p key={code} class="print-remark">{text}</p>)}
      {outliers.value.map(({ name, text }) => <p key={name} class="print-remark">{text}</p>)}
      {errors.remarks.map((remark) => <p key={remark} class="quiet">{remark}</p>)}
      {fruitful.map((analysis) => (
        <PrintedAnalysis
          key={analysis.id}
          title={analysis.label[language.value]}
          norms={norms.get(analysis.id)?.words ?? ""}
          remarks={norms.get(analysis.id)?.remarks ?? []}
          daggers={daggersOf(analysis)}
          rows={ofAnalysis(analysis.id).map((row) => ({ row: rows.value[row]!, text: texts[row]!, error: errorOf.get(row) }))}
        />
      ))}
      {others.length > 0 && <p class="quiet">{t.notMeasured(others.map(({ label }) => label[language.value]).join(", "))}</p>}
      <p class="quiet">{t.noDiagnosis}</p>
      <ChangesTable />
      {laidOver && earlier.value && (
        <PrintedDrawing page={laidOver} caption={t.superimposedCaption(earlier.value.film ?? t.noDate, record.value.film ?? t.noDate, t.registrations[registration.value])} />
      )}
      {page && <PrintedDrawing page={page} />}
    </article>
  );
}
