import { computed } from "@preact/signals";
import { chosenAnalyses, record } from "../state/desk.ts";
import { placedNames, rows, session } from "../state/measuring.ts";
import { language, words } from "../words/words.ts";
import { GuideCard } from "../place/guide_card.tsx";
import { AnalysisPicker } from "./analysis_picker.tsx";
import { AnalysisTable } from "./analysis_table.tsx";
import { Composer } from "./composer.tsx";
import { ErrorSwitch } from "./error_switch.tsx";
import { Remarks } from "./remarks.tsx";

interface Part {
  readonly first: number;
  readonly end: number;
}

const parts = computed(() => {
  const found = new Map<number, Part>();
  rows.value.forEach((row, index) => {
    const part = found.get(row.analysis.id);
    found.set(row.analysis.id, { first: part?.first ?? index, end: index + 1 });
  });
  return found;
});

/** In words, which change with the patient, not with where a landmark lies. */
const facts = computed(() => {
  const { sex, birth, film, dental_stage, population } = record.value;
  return `${sex} ${birth} ${film} ${dental_stage} ${population} ${language.value} ${placedNames.value.size > 0}`;
});
const norms = computed(() => {
  void facts.value;
  void rows.value;
  const told = session.value?.norms(language.value) ?? [];
  return new Map(told.map((norm) => [norm.analysis.id, norm]));
});

export function ResultsPanel() {
  const chosen = chosenAnalyses.value;
  return (
    <div class="results">
      <GuideCard brief />
      <AnalysisPicker />
      <Composer />
      <ErrorSwitch />
      <Remarks />
      {chosen.length === 0 && <p class="quiet">{words.value.chooseFirst}</p>}
      {chosen.map((analysis) => {
        const part = parts.value.get(analysis.id);
        const norm = norms.value.get(analysis.id);
        return (
          part && (
            <AnalysisTable
              key={analysis.id}
              analysis={analysis}
              rows={rows.value}
              first={part.first}
              end={part.end}
              norms={norm?.words ?? ""}
              remarks={norm?.remarks ?? []}
            />
          )
        );
      })}
    </div>
  );
}
