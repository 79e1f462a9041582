import { useComputed, useSignal } from "@preact/signals";
import { useEffect } from "preact/hooks";
import type { Study } from "../../engine/engine.js";
import { store } from "../files/keeping.ts";
import { Choice } from "../parts/choice.tsx";
import { Dialog } from "../parts/dialog.tsx";
import { engine, kind } from "../state/desk.ts";
import type { Kind } from "../state/document.ts";
import { errorWords, sayError, words } from "../words/words.ts";
import { StudyResult } from "./study_result.tsx";
import { type TwiceRead, analysesFor, readTwice } from "./study.ts";

const least = 3;

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
        <StudyResult study={found} films={chosen.value} analyses={analyses} />
      )}
    </Dialog>
  );
}
