// Saving after every change, in order, one write at a time.
import { storeError } from "./database.ts";
import type { CaseEntry, CaseId, SaveState } from "./store.ts";

export interface Change {
  readonly entry: CaseEntry;
  readonly document: unknown;
}

/** Writes all of the changes in one transaction; gives the cases that another tab has changed, which it left alone. */
export type Write = (changes: ReadonlyMap<CaseId, Change>) => Promise<readonly CaseId[]>;

const triedAgainMs = 5_000;

export class Autosave {
  state: SaveState = { kind: "saved" };
  private waiting = new Map<CaseId, Change>();
  private readonly conflicting = new Map<CaseId, Change>();
  private writing: Promise<void> | null = null;
  private retry: ReturnType<typeof setTimeout> | undefined;
  private readonly listeners = new Set<(state: SaveState) => void>();
  private readonly write: Write;

  constructor(write: Write) {
    this.write = write;
  }

  /** Takes the place of what the case had waiting. */
  add(change: Change): void {
    const id = change.entry.id;
    if (this.conflicting.has(id)) {
      this.conflicting.set(id, change);
      return;
    }
    this.waiting.delete(id); // to the end: the order of the last changes
    this.waiting.set(id, change);
    this.begin();
  }

  /** Whether all is written, once nothing is under way. */
  async settled(): Promise<boolean> {
    while (this.writing) await this.writing;
    return this.waiting.size === 0 && this.conflicting.size === 0;
  }

  /** A case that has been deleted, or of which another tab's value is taken. */
  drop(id: CaseId): void {
    this.waiting.delete(id);
    this.conflicting.delete(id);
    this.tell(this.stateNow(this.writing !== null));
  }

  /** Writes a change after all that another tab had overtaken. */
  overwrite(id: CaseId): void {
    const change = this.conflicting.get(id);
    this.conflicting.delete(id);
    if (change) this.add(change);
  }

  on(listener: (state: SaveState) => void): () => void {
    this.listeners.add(listener);
    return () => this.listeners.delete(listener);
  }

  stop(): void {
    clearTimeout(this.retry);
  }

  private begin(): void {
    if (this.writing) return;
    clearTimeout(this.retry);
    this.tell({ kind: "saving" });
    this.writing = this.writeAll().finally(() => (this.writing = null));
  }

  private async writeAll(): Promise<void> {
    while (this.waiting.size > 0) {
      const changes = this.waiting;
      this.waiting = new Map();
      try {
        for (const id of await this.write(changes)) {
          const change = this.waiting.get(id) ?? changes.get(id);
          this.waiting.delete(id);
          if (change) this.conflicting.set(id, change);
        }
      } catch (error) {
        // What came meanwhile is later than what failed.
        this.waiting = new Map([...changes, ...this.waiting]);
        const { why, message: detail } = storeError(error);
        this.retry = setTimeout(() => this.begin(), triedAgainMs);
        this.tell({ kind: "failed", why: why === "damaged" ? "other" : why, detail });
        return;
      }
    }
    this.tell(this.stateNow(false));
  }

  private stateNow(busy: boolean): SaveState {
    const [conflict] = this.conflicting.keys();
    if (conflict !== undefined) return { kind: "failed", why: "conflict", detail: conflict };
    if (this.state.kind === "failed" && this.waiting.size > 0) return this.state;
    return busy || this.waiting.size > 0 ? { kind: "saving" } : { kind: "saved" };
  }

  private tell(state: SaveState): void {
    this.state = state;
    for (const listener of this.listeners) listener(state);
  }
}
