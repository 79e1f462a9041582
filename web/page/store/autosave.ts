// Saving after every change, in order, one write at a time.
import { storeError } from "./database.ts";
import type { SaveState } from "./store.ts";

/** Writes all of the changes, by the names of what they change, or none; gives those that another tab has changed, which it left alone. */
export type Write<Change> = (changes: ReadonlyMap<string, Change>) => Promise<readonly string[]>;

const triedAgainMs = 5_000;

export class Autosave<Change> {
  state: SaveState = { kind: "saved" };
  private waiting = new Map<string, Change>();
  private readonly conflicting = new Map<string, Change>();
  private writing: Promise<void> | null = null;
  private retry: ReturnType<typeof setTimeout> | undefined;
  private readonly listeners = new Set<(state: SaveState) => void>();
  private readonly write: Write<Change>;

  constructor(write: Write<Change>) {
    this.write = write;
  }

  /** Takes the place of what waits under the same name. */
  add(id: string, change: Change): void {
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

  /** What has been deleted, or of which another tab's value is taken. */
  drop(id: string): void {
    this.waiting.delete(id);
    this.conflicting.delete(id);
    this.tell(this.stateNow(this.writing !== null));
  }

  /** Writes a change after all that another tab had overtaken. */
  overwrite(id: string): void {
    const change = this.conflicting.get(id);
    this.conflicting.delete(id);
    if (change) this.add(id, change);
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
    this.writing = this.writeAll().then((isWritten) => {
      this.writing = null;
      if (isWritten && this.waiting.size > 0) this.begin(); // came after the last look
    });
  }

  /** False when it is to be tried again later. */
  private async writeAll(): Promise<boolean> {
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
        return false;
      }
    }
    this.tell(this.stateNow(false));
    return true;
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
