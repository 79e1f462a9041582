import { useRef } from "preact/hooks";
import { signal } from "@preact/signals";
import type { Registration } from "../../engine/engine.js";
import { readCases } from "../files/open.ts";
import { earlierCases, openEarlier } from "../files/keeping.ts";
import { Readings } from "../readings/readings.tsx";
import { ChangesTable } from "./changes_table.tsx";
import { earlier, registration, superimposed, superimpositionError } from "../view/tracings.ts";
import { say, sayError, words } from "../words/words.ts";

const planes: readonly Registration[] = ["cranial-base", "palatal-plane", "mandibular-plane"];
const isReading = signal(false);

async function openFile(file: File | undefined): Promise<void> {
  if (!file) return;
  isReading.value = true;
  try {
    const [first, ...others] = await readCases(file);
    earlier.value = first?.record ?? null;
    if (others.length > 0) say(words.peek().firstTaken(others.map(({ record }) => record.name ?? words.peek().unnamed).join(", ")));
  } catch (error) {
    sayError(error);
  } finally {
    isReading.value = false;
  }
}

/** An earlier film of the patient laid over this one. */
export function ComparePanel() {
  const t = words.value;
  const picker = useRef<HTMLInputElement>(null);
  return (
    <div class="compare">
      <Readings />
      <h2>{t.compareTitle}</h2>
      <p class="quiet">{t.compareHow}</p>
      {earlierCases.value.map((entry) => (
        <button key={entry.id} type="button" class="film-entry" onClick={() => void openEarlier(entry.id)}>
          {entry.filmDate || t.noDate} · {t.kinds[entry.kind]} · {t.landmarkCount(entry.landmarkCount)}
        </button>
      ))}
      <div class="buttons">
        <button type="button" disabled={isReading.value} onClick={() => picker.current?.click()}>{t.openEarlier}</button>
        {earlier.value && <button type="button" onClick={() => (earlier.value = null)}>{t.takeAway}</button>}
      </div>
      <input ref={picker} class="unseen" type="file" tabIndex={-1} aria-label={t.openEarlier} onChange={(event) => void openFile(event.currentTarget.files?.[0])} />
      {earlier.value && (
        <fieldset>
          <legend>{t.registration}</legend>
          <p>
            <i class="swatch earlier" /> {earlier.value.name ?? t.unnamed} {earlier.value.film ?? ""}
          </p>
          {planes.map((plane) => (
            <label key={plane} class="choice">
              <input type="radio" name="registration" checked={registration.value === plane} onChange={() => (registration.value = plane)} />
              <span>{t.registrations[plane]}</span>
            </label>
          ))}
          {superimposed.value === null && <p class="remark warning">{superimpositionError.value}</p>}
        </fieldset>
      )}
      <ChangesTable />
    </div>
  );
}
