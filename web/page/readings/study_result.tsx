import type { Analysis, Study } from "../../engine/engine.js";
import { download } from "../files/download.ts";
import { engine } from "../state/desk.ts";
import { language, words } from "../words/words.ts";
import { saveReadings } from "./save_readings.ts";
import type { TwiceRead } from "./study.ts";
import { type Row, StudyTable } from "./study_table.tsx";

interface Props {
  readonly study: Study;
  readonly films: readonly TwiceRead["film"][];
  readonly analyses: readonly Analysis[];
}

/** How well the films' readings agree, to be looked at and to be saved. */
export function StudyResult({ study, films, analyses }: Props) {
  const t = words.value;
  return (
    <>
      <div class="buttons">
        <button type="button" onClick={() => download(engine.peek()!.studyCsv(films, analyses), `${t.studyTitle}.csv`, "text/csv")}>{t.saveStudy}</button>
        <button type="button" onClick={() => saveReadings(films.map(({ readings }) => readings))}>{t.saveAllReadings}</button>
      </div>
      <div class="study" tabIndex={0} role="region" aria-label={t.studyTitle}>
        {analyses.map((analysis) => {
          const rows = study.rows.filter((row) => row.group === "item" && row.analysis === analysis.title);
          const label = (row: Row): string => `${analysis.items.find(({ name }) => name === row.name)?.label[language.value] ?? row.name}${row.unit === "deg" ? ", °" : row.unit && `, ${row.unit}`}`;
          return rows.length > 0 && <StudyTable key={analysis.id} title={analysis.label[language.value]} rows={rows} nameOf={label} />;
        })}
        <StudyTable
          title={t.studyLandmarks}
          rows={study.rows.filter(({ group }) => group === "landmark")}
          nameOf={({ name }) => name.replace(/^(.*) (along|across)$/, (_all, landmark: string, way: string) => (way === "along" ? t.alongOf(landmark) : t.acrossOf(landmark)))}
        />
        <p class="quiet">{t.studyLegend}</p>
      </div>
    </>
  );
}
