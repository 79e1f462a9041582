// Undo and redo without end. A document shares with the one before it all that a change left alone, so keeping them is
// cheap, and nothing has to know how to take itself back.
import { batch, computed, signal } from "@preact/signals";
import type { Document, View, Work } from "./document.ts";

export class History {
  private readonly past = signal<readonly Work[]>([]);
  private readonly future = signal<readonly Work[]>([]);
  private readonly now;
  /** The work before a change that still goes on, such as a drag. */
  private readonly before = signal<Work | null>(null);

  readonly document;
  /** Whether a change still goes on. */
  readonly isStepping = computed(() => this.before.value !== null);
  readonly canUndo = computed(() => this.past.value.length > 0);
  readonly canRedo = computed(() => this.future.value.length > 0);

  constructor(start: Document) {
    this.now = signal(start);
    this.document = computed(() => this.now.value);
  }

  /** Another case: what was done to the one before can't be taken back in it. */
  begin(document: Document): void {
    batch(() => {
      this.past.value = [];
      this.future.value = [];
      this.before.value = null;
      this.now.value = document;
    });
  }

  /** One step that undo takes back, together with all of `preview` since the last. */
  change(next: (work: Work) => Work): void {
    this.preview(next);
    this.commit();
  }

  /** Part of a step. */
  preview(next: (work: Work) => Work): void {
    const { work, view } = this.now.peek();
    const changed = next(work);
    if (changed === work) return;
    batch(() => {
      this.before.value ??= work;
      this.now.value = { work: changed, view };
    });
  }

  commit(): void {
    const before = this.before.peek();
    if (before === null) return;
    batch(() => {
      if (before !== this.now.peek().work) {
        this.past.value = [...this.past.peek(), before];
        this.future.value = [];
      }
      this.before.value = null;
    });
  }

  /** Gives up a step that still goes on. */
  cancel(): void {
    const before = this.before.peek();
    batch(() => {
      if (before !== null) this.now.value = { ...this.now.peek(), work: before };
      this.before.value = null;
    });
  }

  look(next: Partial<View>): void {
    const { work, view } = this.now.peek();
    this.now.value = { work, view: { ...view, ...next } };
  }

  undo(): void {
    this.commit();
    this.step(this.past, this.future);
  }

  redo(): void {
    this.commit();
    this.step(this.future, this.past);
  }

  private step(from: typeof this.past, to: typeof this.past): void {
    const work = from.peek().at(-1);
    if (work === undefined) return;
    const { work: left, view } = this.now.peek();
    batch(() => {
      to.value = [...to.peek(), left];
      from.value = from.peek().slice(0, -1);
      this.now.value = { work, view };
    });
  }
}
