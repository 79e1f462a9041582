// IndexedDB as promises, and what lies in it.
import type { CaseEntry, CaseId, FilmId, Patient, PatientId } from "./store.ts";
import { StoreError } from "./store.ts";

/** Lists are read whole, so what they show lies apart from the documents and films. */
export interface Tables {
  patients: { key: PatientId; value: Patient };
  entries: { key: CaseId; value: { readonly entry: CaseEntry; readonly revision: number } };
  documents: { key: CaseId; value: unknown };
  films: { key: FilmId; value: { readonly file: Blob; readonly name: string } };
}

export type TableName = keyof Tables;
const tableNames: readonly TableName[] = ["patients", "entries", "documents", "films"];
const layoutVersion = 1;

export interface Table<Name extends TableName> {
  get(key: Tables[Name]["key"]): Promise<Tables[Name]["value"] | undefined>;
  all(): Promise<readonly Tables[Name]["value"][]>;
  keys(): Promise<readonly string[]>;
  put(key: Tables[Name]["key"], value: Tables[Name]["value"]): Promise<unknown>;
  delete(key: Tables[Name]["key"]): Promise<unknown>;
}

function answerOf<Value>(request: IDBRequest<Value>): Promise<Value> {
  return new Promise((resolve, reject) => {
    request.onsuccess = () => resolve(request.result);
    request.onerror = () => reject(request.error);
  });
}

/** What a failure of IndexedDB means to a person. */
export function storeError(error: unknown): StoreError {
  if (error instanceof StoreError) return error;
  const name = error instanceof DOMException || error instanceof Error ? error.name : "";
  const detail = error instanceof Error ? error.message : String(error);
  if (name === "QuotaExceededError") return new StoreError("full", detail);
  if (name === "InvalidStateError" || name === "AbortError") return new StoreError("closed", detail);
  return new StoreError("other", detail);
}

export type Work<Names extends TableName, Result> = (tables: { [Name in Names]: Table<Name> }) => Promise<Result>;

/** The database, opened where it is needed and again after the browser closed it. */
export class Database {
  private opening: Promise<IDBDatabase> | null = null;
  private readonly name: string;
  private readonly factory: IDBFactory;

  constructor(name: string, factory: IDBFactory) {
    this.name = name;
    this.factory = factory;
  }

  /**
   * Does `work` in one transaction: all of it is done when the promise settles, or nothing. Within it only the tables may be awaited.
   * Throws StoreError.
   */
  async transaction<Names extends TableName, Result>(
    names: readonly Names[],
    mode: "readonly" | "readwrite",
    work: Work<Names, Result>,
  ): Promise<Result> {
    try {
      const database = await this.opened();
      const transaction = database.transaction([...names], mode, { durability: mode === "readwrite" ? "strict" : "default" });
      const done = new Promise<void>((resolve, reject) => {
        transaction.oncomplete = () => resolve();
        transaction.onabort = () => reject(transaction.error ?? new DOMException("aborted", "AbortError"));
      });
      done.catch(() => {}); // where `work` itself throws
      const tables = Object.fromEntries(names.map((name) => [name, tableOf(transaction.objectStore(name))]));
      let result: Result;
      try {
        result = await work(tables as { [Name in Names]: Table<Name> });
      } catch (error) {
        // Whoever threw, the transaction's own error says why it ended.
        if (transaction.error) throw transaction.error;
        try {
          transaction.abort();
        } catch {
          // It has ended by itself.
        }
        throw error;
      }
      await done;
      return result;
    } catch (error) {
      throw storeError(error);
    }
  }

  close(): void {
    void this.opening?.then((database) => database.close());
    this.opening = null;
  }

  private opened(): Promise<IDBDatabase> {
    this.opening ??= this.open().catch((error: unknown) => {
      this.opening = null;
      throw error;
    });
    return this.opening;
  }

  private async open(): Promise<IDBDatabase> {
    const request = this.factory.open(this.name, layoutVersion);
    request.onupgradeneeded = () => {
      for (const name of tableNames) request.result.createObjectStore(name);
    };
    const database = await answerOf(request);
    const forget = (): void => void (this.opening = null);
    database.onclose = forget;
    database.onversionchange = () => {
      database.close();
      forget();
    };
    return database;
  }
}

function tableOf(store: IDBObjectStore): Table<TableName> {
  return {
    get: (key) => answerOf(store.get(key)),
    all: () => answerOf(store.getAll()),
    keys: async () => (await answerOf(store.getAllKeys())).map(String),
    put: (key, value) => answerOf(store.put(value, key)),
    delete: (key) => answerOf(store.delete(key)),
  };
}
