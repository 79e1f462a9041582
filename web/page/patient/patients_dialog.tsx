import { useComputed, useSignal } from "@preact/signals";
import { useEffect, useRef } from "preact/hooks";
import { download } from "../files/download.ts";
import { beginCase, deleteKept, deleteKeptPatient, isOnDesk, nextCaseIsOf, openKept, patients, refreshPatients, store } from "../files/keeping.ts";
import { showNoFilm } from "../files/show_film.ts";
import { dialog } from "../parts/dialog_choice.ts";
import { Dialog } from "../parts/dialog.tsx";
import { panel } from "../parts/panel_choice.ts";
import { usualAnalyses } from "../results/usual_analyses.ts";
import { folder } from "../state/desk.ts";
import { emptyDocument } from "../state/document.ts";
import type { CaseEntry, PatientEntry } from "../store/store.ts";
import { named, say, sayError, words } from "../words/words.ts";

function newCase(): void {
  beginCase(emptyDocument("lateral", usualAnalyses(folder.peek()?.analyses("lateral") ?? [])));
  showNoFilm();
  panel.value = "patient";
}

/** What is deleted leaves the desk first, for it would be kept anew. */
function clearDesk(cases: readonly CaseEntry[]): void {
  if (cases.some(({ id }) => isOnDesk(id))) newCase();
}

async function deleteCase(entry: CaseEntry): Promise<void> {
  clearDesk([entry]);
  await deleteKept(entry.id);
}

async function deletePatient({ patient, cases }: PatientEntry): Promise<void> {
  clearDesk(cases);
  await deleteKeptPatient(patient.id);
}

function DeleteButton({ label, onDelete }: { label: string; onDelete: () => Promise<void> }) {
  const isSure = useSignal(false);
  return (
    <button type="button" onClick={() => (isSure.value ? void onDelete().catch(sayError) : (isSure.value = true))}>
      {isSure.value ? words.value.reallyDelete : label}
    </button>
  );
}

async function exportAll(): Promise<void> {
  try {
    download((await store.peek()?.exportAll()) ?? "", `${words.peek().title}.digitiser`);
  } catch (error) {
    sayError(error);
  }
}

async function importAll(file: File | undefined): Promise<void> {
  if (!file) return;
  try {
    const count = await store.peek()?.importAll(file);
    if (count) say(words.peek().imported(count.patients, count.cases, count.films));
    await refreshPatients();
  } catch (error) {
    sayError(named(error, file.name));
  }
}

function FilmRow({ entry, onClose }: { entry: CaseEntry; onClose: () => void }) {
  const t = words.value;
  return (
    <li class="film-row">
      <button
        type="button"
        class="film-entry"
        onClick={() => {
          onClose();
          openKept(entry.id).catch(sayError);
        }}
      >
        {entry.filmDate || t.noDate} · {t.kinds[entry.kind]} · {t.landmarkCount(entry.landmarkCount)}
        {entry.readingOf !== undefined && ` · ${t.readingAgain}`}
      </button>
      <DeleteButton label={t.delete} onDelete={() => deleteCase(entry)} />
    </li>
  );
}

function PatientRow({ entry, onClose }: { entry: PatientEntry; onClose: () => void }) {
  const t = words.value;
  const { patient, cases } = entry;
  return (
    <li class="patient-row">
      <b>{patient.name || t.unnamed}</b> <span class="quiet">{[patient.sex && t[patient.sex], patient.birthDate].filter(Boolean).join(" · ")}</span>
      <ul>{cases.map((film) => <FilmRow key={film.id} entry={film} onClose={onClose} />)}</ul>
      <button
        type="button"
        onClick={() => {
          nextCaseIsOf(patient.id);
          newCase();
          onClose();
        }}
      >
        {t.newFilm}
      </button>
      <DeleteButton label={t.deletePatient} onDelete={() => deletePatient(entry)} />
    </li>
  );
}

/** Everybody whose films are kept in this browser. */
export function PatientsDialog({ onClose }: { onClose: () => void }) {
  const t = words.value;
  const search = useSignal("");
  const picker = useRef<HTMLInputElement>(null);
  useEffect(() => void refreshPatients().catch(sayError), []);
  const found = useComputed(() => {
    const wanted = search.value.trim().toLocaleLowerCase();
    return patients.value.filter(({ patient }) => `${patient.name} ${patient.number} ${patient.birthDate}`.toLocaleLowerCase().includes(wanted));
  });
  return (
    <Dialog title={t.patients} onClose={onClose} wide>
      <div class="buttons">
        <label class="field search">
          <span>{t.search}</span>
          <input type="search" value={search.value} onInput={(event) => (search.value = event.currentTarget.value)} />
        </label>
        <button type="button" class="primary" onClick={() => { newCase(); onClose(); }}>{t.newPatient}</button>
        <button type="button" onClick={() => (dialog.value = "study")}>{t.studyTitle}</button>
        <button type="button" onClick={() => void exportAll()}>{t.exportAll}</button>
        <button type="button" onClick={() => picker.current?.click()}>{t.importAll}</button>
        <input ref={picker} class="unseen" type="file" accept=".digitiser" tabIndex={-1} aria-label={t.importAll} onChange={(event) => void importAll(event.currentTarget.files?.[0])} />
      </div>
      {store.value === null && <p class="remark warning">{t.keepsNothing}</p>}
      <p class="quiet" role="status">{t.patientCount(found.value.length)}</p>
      <ul class="patients">{found.value.map((entry) => <PatientRow key={entry.patient.id} entry={entry} onClose={onClose} />)}</ul>
    </Dialog>
  );
}
