// The store in the browser's IndexedDB.
import { archiveFile, filmIdOf, readArchive } from "./archive.ts";
import { Autosave } from "./autosave.ts";
import { Database, type Table, type Tables } from "./database.ts";
import {
  StoreError,
  type CaseEntry,
  type CaseId,
  type FilmId,
  type ImportCount,
  type Patient,
  type PatientEntry,
  type PatientId,
  type SaveState,
  type Store,
  type StoredCase,
  type StoredFilm,
} from "./store.ts";

const writable = ["patients", "entries", "documents", "films"] as const;

function byName(one: PatientEntry, other: PatientEntry): number {
  return one.patient.name.localeCompare(other.patient.name) || one.patient.number.localeCompare(other.patient.number);
}

function latestFirst(one: CaseEntry, other: CaseEntry): number {
  return other.filmDate.localeCompare(one.filmDate) || other.changedAt - one.changedAt;
}

interface CaseChange {
  readonly entry: CaseEntry;
  readonly document: unknown;
}

type FilmChange = Tables["films"]["value"];

class IndexedStore<Document> implements Store<Document> {
  private readonly database: Database;
  private readonly tabs: BroadcastChannel;
  private readonly cases: Autosave<CaseChange>;
  /** Apart, since a disk without room for a film may have some for a case. */
  private readonly films: Autosave<FilmChange>;
  /** Of each case that this tab has read or written. */
  private readonly revisions = new Map<CaseId, number>();

  constructor(name: string) {
    this.database = new Database(name, indexedDB);
    this.tabs = new BroadcastChannel(name);
    this.cases = new Autosave((changes) => this.writeCases(changes));
    this.films = new Autosave((changes) => this.writeFilms(changes));
  }

  async patients(): Promise<readonly PatientEntry[]> {
    const [patients, kept] = await this.database.transaction(["patients", "entries"], "readonly", ({ patients, entries }) =>
      Promise.all([patients.all(), entries.all()]),
    );
    const cases = new Map<PatientId, CaseEntry[]>(patients.map((patient) => [patient.id, []]));
    for (const { entry } of kept) cases.get(entry.patient)?.push(entry);
    return patients.map((patient) => ({ patient, cases: (cases.get(patient.id) ?? []).sort(latestFirst) })).sort(byName);
  }

  async putPatient(patient: Patient): Promise<void> {
    await this.database.transaction(["patients"], "readwrite", ({ patients }) => patients.put(patient.id, patient));
    this.tell("");
  }

  async deletePatient(id: PatientId): Promise<void> {
    const deleted = await this.database.transaction(writable, "readwrite", async (tables) => {
      const gone = (await tables.entries.all()).map(({ entry }) => entry).filter((entry) => entry.patient === id);
      await tables.patients.delete(id);
      await this.deleteFrom(tables, gone);
      return gone;
    });
    for (const entry of deleted) this.cases.drop(entry.id);
    this.tell("");
  }

  async openCase(id: CaseId): Promise<StoredCase<Document> | null> {
    const [kept, document] = await this.database.transaction(["entries", "documents"], "readonly", ({ entries, documents }) =>
      Promise.all([entries.get(id), documents.get(id)]),
    );
    if (!kept) return null;
    this.revisions.set(id, kept.revision);
    return { ...kept, document: document as Document };
  }

  saveCase(entry: CaseEntry, document: Document): void {
    this.cases.add(entry.id, { entry, document });
  }

  async deleteCase(id: CaseId): Promise<void> {
    await this.database.transaction(writable, "readwrite", async (tables) => {
      const kept = await tables.entries.get(id);
      if (kept) await this.deleteFrom(tables, [kept.entry]);
    });
    this.cases.drop(id);
    this.tell("");
  }

  async settled(): Promise<boolean> {
    return (await this.cases.settled()) && (await this.films.settled());
  }

  async resolve(id: CaseId, whose: "ours" | "theirs"): Promise<void> {
    const theirs = await this.database.transaction(["entries"], "readonly", ({ entries }) => entries.get(id));
    this.revisions.set(id, theirs?.revision ?? 0);
    if (whose === "ours") this.cases.overwrite(id);
    else this.cases.drop(id);
  }

  async putFilm(file: Blob, name: string): Promise<FilmId> {
    const id = await filmIdOf(file);
    // Asked once there is something to lose; browsers without an answer keep what they have room for.
    void navigator.storage?.persist?.().catch(() => false);
    this.films.add(id, { file, name });
    return id;
  }

  async film(id: FilmId): Promise<StoredFilm | null> {
    const film = await this.database.transaction(["films"], "readonly", ({ films }) => films.get(id));
    return film ? { id, ...film } : null;
  }

  saveState(): SaveState {
    const states = [this.cases.state, this.films.state];
    return states.find(({ kind }) => kind === "failed") ?? states.find(({ kind }) => kind === "saving") ?? { kind: "saved" };
  }

  onSaveState(listener: (state: SaveState) => void): () => void {
    const ends = [this.cases, this.films].map((one) => one.on(() => listener(this.saveState())));
    return () => ends.forEach((end) => end());
  }

  onOtherTab(listener: (id: CaseId | "") => void): () => void {
    const heard = (event: MessageEvent<unknown>): void => listener(String(event.data));
    this.tabs.addEventListener("message", heard);
    return () => this.tabs.removeEventListener("message", heard);
  }

  async exportAll(): Promise<Blob> {
    await this.settled();
    return this.database.transaction(writable, "readonly", async ({ patients, entries, documents, films }) => {
      const [people, kept, ids] = await Promise.all([patients.all(), entries.all(), films.keys()]);
      const papers = await Promise.all(kept.map(({ entry }) => documents.get(entry.id)));
      const pictures = await Promise.all(ids.map((id) => films.get(id)));
      return archiveFile({
        patients: people,
        cases: kept.map((one, i) => ({ ...one, document: papers[i] ?? null })),
        films: pictures.flatMap((film, i) => (film ? [{ id: ids[i] ?? "", name: film.name, type: film.file.type, file: film.file }] : [])),
      });
    });
  }

  async importAll(file: Blob): Promise<ImportCount> {
    const archive = await readArchive(file);
    const count = await this.database.transaction(writable, "readwrite", async (tables) => {
      const [people, kept, pictures] = await Promise.all([tables.patients.keys(), tables.entries.all(), tables.films.keys()]);
      const here = new Map(kept.map((one) => [one.entry.id, one]));
      const newer = archive.cases.filter(({ entry }) => entry.changedAt > (here.get(entry.id)?.entry.changedAt ?? -1));
      const patients = archive.patients.filter((patient) => !people.includes(patient.id));
      const films = archive.films.filter((film) => !pictures.includes(film.id));
      await Promise.all([
        ...patients.map((patient) => tables.patients.put(patient.id, patient)),
        ...films.map(({ id, file: picture, name }) => tables.films.put(id, { file: picture, name })),
        ...newer.flatMap(({ entry, document }) => {
          const revision = (here.get(entry.id)?.revision ?? 0) + 1;
          return [tables.entries.put(entry.id, { entry, revision }), tables.documents.put(entry.id, document)];
        }),
      ]);
      return { patients: patients.length, cases: newer.length, films: films.length, left: archive.cases.length - newer.length };
    });
    this.tell("");
    return count;
  }

  close(): void {
    this.cases.stop();
    this.films.stop();
    this.tabs.close();
    this.database.close();
  }

  private tell(id: CaseId | ""): void {
    this.tabs.postMessage(id);
  }

  private async writeCases(changes: ReadonlyMap<CaseId, CaseChange>): Promise<readonly CaseId[]> {
    const { overtaken, written } = await this.database.transaction(["entries", "documents"], "readwrite", async ({ entries, documents }) => {
      const overtaken: CaseId[] = [];
      const written = new Map<CaseId, number>();
      for (const [id, { entry, document }] of changes) {
        const revision = (await entries.get(id))?.revision ?? 0;
        if (revision !== (this.revisions.get(id) ?? 0)) {
          overtaken.push(id);
          continue;
        }
        await Promise.all([entries.put(id, { entry, revision: revision + 1 }), documents.put(id, document)]);
        written.set(id, revision + 1);
      }
      return { overtaken, written };
    });
    for (const [id, revision] of written) {
      this.revisions.set(id, revision);
      this.tell(id);
    }
    return overtaken;
  }

  private async writeFilms(changes: ReadonlyMap<FilmId, FilmChange>): Promise<readonly FilmId[]> {
    for (const [id, film] of changes) {
      await this.database.transaction(["films"], "readwrite", async ({ films }) => {
        if (!(await films.get(id))) await films.put(id, film);
      });
    }
    return [];
  }

  /** Deletes cases, and of their films those that no other case shows. */
  private async deleteFrom({ entries, documents, films }: WritableTables, gone: readonly CaseEntry[]): Promise<void> {
    await Promise.all(gone.flatMap(({ id }) => [entries.delete(id), documents.delete(id)]));
    const used = new Set((await entries.all()).map(({ entry }) => entry.film));
    await Promise.all(gone.flatMap(({ film }) => (film === null || used.has(film) ? [] : [films.delete(film)])));
    for (const { id } of gone) this.revisions.delete(id);
  }
}

type WritableTables = { [Name in keyof Tables]: Table<Name> };

/** Rejects with StoreError where the browser keeps nothing, as in some private windows. */
export async function openStore<Document>(name = "digitiser"): Promise<Store<Document>> {
  if (typeof indexedDB === "undefined") throw new StoreError("closed", "IndexedDB");
  const store = new IndexedStore<Document>(name);
  await store.patients();
  return store;
}
