import { useComputed, useSignal } from "@preact/signals";
import { useEffect } from "preact/hooks";
import type { Study } from "../../engine/engine.js";
import { download } from "../files/download.ts";
import { store } from "../files/keeping.ts";
import { Choice } from "../parts/choice.tsx";
import { Dialog } from "../parts/dialog.tsx";
import { engine, kind } from "../state/desk.ts";
import type { Kind } from "../state/document.ts";
import { errorWords, language, sayError, words } from "../words/words.ts";
import { fixed, signed } from "./number_words.ts";
import { saveReadings } from "./save_readings.ts";
import { type TwiceRead, analysesFor, readTwice } from "./study.ts";

const least = 3;

type Row = Study["rows"][number];

function StudyTable({ title, rows, nameOf }: { title: string; rows: readonly Row[]; nameOf: (row: Row) => string }) {
  const { films, bias, p, limits, error, icc } = words.value.studyColumns;
  return (
    <table>
      <caption>{title}</caption>
      <thead>
        <tr>
          <th scope="col">{words.value.item}</th>
          {[films, bias, p, limits, error, icc].map((column) => <th key={column} scope="col">{column}</th>)}
        </tr>
      </thead>
      <tbody>
        {rows.map((row, index) => {
          const [against] = row.against_first;
          return (
            against && (
              <tr key={index}>
                <th scope="row">{nameOf(row)}</th>
                <td>{row.films}</td>
                <td>{signed(against.bias, 2)}</td>
                <td>{against.p === null ? "–" : against.p < 0.001 ? "<0.001" : against.p.toFixed(3)}</td>
                <td>{against.limits.map((limit) => signed(limit, 2)).join(" … ")}</td>
                <td>{against.dahlberg.toFixed(2)}</td>
                <td>{row.icc21 ? `${fixed(row.icc21.value, 2)} (${row.icc21.interval.map((end) => fixed(end, 2)).join(" – ")})` : "–"}</td>
              </tr>
            )
          );
        })}
      </tbody>
    </table>
  );
}

/** How well the readings agree of films that were read twice. */
export function StudyDialog({ onClose }: { onClose: () => void }) {
  const t = words.value;
  const all = useSignal<readonly TwiceRead[]>([]);
  const wanted = useSignal<Kind>(kind.peek());
  const left = useSignal<ReadonlySet<string>>(new Set());
  useEffect(() => {
    void (async () => {
      await store.peek()?.settled();
      all.value = await readTwice();
      const kinds = all.value.map((film) => film.kind);
      if (!kinds.includes(wanted.value)) wanted.value = kinds[0] ?? wanted.value;
    })().catch(sayError);
  }, []);
  const listed = useComputed(() => all.value.filter((film) => film.kind === wanted.value));
  const chosen = useComputed(() => listed.value.filter(({ id, trouble }) => trouble === "" && !left.value.has(id)).map(({ film }) => film));
  const study = useComputed<Study | string>(() => {
    if (chosen.value.length < least || !engine.value) return words.value.studyNeeds(chosen.value.length);
    try {
      return engine.value.study(chosen.value, analysesFor(wanted.value));
    } catch (error) {
      return errorWords(error);
    }
  });
  const found = study.value;
  const analyses = analysesFor(wanted.value);
  const kinds = [...new Set(all.value.map((film) => film.kind))];
  return (
    <Dialog title={t.studyTitle} onClose={onClose} wide>
      <p class="quiet">{t.studyHow}</p>
      {kinds.length > 1 && <Choice label={t.kind} value={wanted.value} options={kinds.map((each) => [each, t.kinds[each]] as const)} onChange={(next) => (wanted.value = next ?? wanted.value)} />}
      <ul class="study-films">
        {listed.value.map(({ id, film, trouble }) => (
          <li key={id}>
            <label class="choice">
              <input
                type="checkbox"
                disabled={trouble !== ""}
                checked={trouble === "" && !left.value.has(id)}
                onChange={(event) => {
                  const next = new Set(left.value);
                  if (event.currentTarget.checked) next.delete(id);
                  else next.add(id);
                  left.value = next;
                }}
              />
              <span>{film.name}</span> {trouble && <small>{trouble}</small>}
            </label>
          </li>
        ))}
      </ul>
      {typeof found === "string" ? (
        <p class="remark" role="status">{found}</p>
      ) : (
        <>
          <div class="buttons">
            <button type="button" onClick={() => download(engine.peek()!.studyCsv(chosen.value, analyses), `${t.studyTitle}.csv`, "text/csv")}>{t.saveStudy}</button>
            <button type="button" onClick={() => saveReadings(chosen.value.map(({ readings }) => readings))}>{t.saveAllReadings}</button>
          </div>
          <div class="study" tabIndex={0} role="region" aria-label={t.studyTitle}>
            {analyses.map((analysis) => {
              const rows = found.rows.filter((row) => row.group === "item" && row.analysis === analysis.title);
              const label = (row: Row): string => `${analysis.items.find(({ name }) => name === row.name)?.label[language.value] ?? row.name}${row.unit === "deg" ? ", °" : row.unit && `, ${row.unit}`}`;
              return rows.length > 0 && <StudyTable key={analysis.id} title={analysis.label[language.value]} rows={rows} nameOf={label} />;
            })}
            <StudyTable
              title={t.studyLandmarks}
              rows={found.rows.filter(({ group }) => group === "landmark")}
              nameOf={({ name }) => name.replace(/^(.*) (along|across)$/, (_all, landmark: string, way: string) => (way === "along" ? t.alongOf(landmark) : t.acrossOf(landmark)))}
            />
            <p class="quiet">{t.studyLegend}</p>
          </div>
        </>
      )}
    </Dialog>
  );
}
